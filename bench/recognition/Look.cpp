#include "bench/recognition/Look.h"

namespace tessary::bench {
namespace {

constexpr int kSmallest = 12;
constexpr int kLargest = 20;

struct Colours {
    const char* background;
    const char* text;
    const char* secondary;
    const char* card;
    bool dark;
};

const QList<Colours> kTuningColours{
    {"#ffffff", "#1c1c1e", "#636366", "#efeff1", false}, {"#f6f5f4", "#2e3436", "#5e5c64", "#ffffff", false},
    {"#fdf6e3", "#3b4a50", "#586e75", "#eee8d5", false}, {"#dcecff", "#0b2d55", "#33557d", "#ffffff", false},
    {"#1e1e20", "#f2f2f4", "#a5a5ab", "#343438", true},  {"#002b36", "#eee8d5", "#93a1a1", "#073642", true},
    {"#2a4d3a", "#f1f7f3", "#bcd6c6", "#1d3529", true},
};

const QList<Colours> kReportingColours{
    {"#ffffff", "#000000", "#555555", "#f2f6fb", false}, {"#eff0f1", "#232629", "#5b6064", "#fcfcfc", false},
    {"#fff3e0", "#4a2c00", "#7a4f12", "#ffe2b8", false}, {"#e6f4eb", "#12391f", "#2f6b45", "#ffffff", false},
    {"#282c34", "#dcdfe4", "#9da5b4", "#353b45", true},  {"#000000", "#ffffff", "#b0b0b0", "#2b2b2b", true},
    {"#3a1d4f", "#f6eefb", "#cdb6dd", "#52306b", true},
};

QStringList latinFamilies(Half half, Face face)
{
    if (face == Face::Monospaced)
        return half == Half::Tuning ? QStringList{QStringLiteral("DejaVu Sans Mono")}
                                    : QStringList{QStringLiteral("Liberation Mono"), QStringLiteral("Hack")};
    return half == Half::Tuning ? QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("Open Sans"),
                                              QStringLiteral("Liberation Serif")}
                                : QStringList{QStringLiteral("Liberation Sans"), QStringLiteral("Cantarell"),
                                              QStringLiteral("DejaVu Serif")};
}

QStringList wideFamilies(Half half, const QString& script)
{
    const bool tuning = half == Half::Tuning;
    if (script == QLatin1String("ja"))
        return tuning ? QStringList{QStringLiteral("Noto Sans CJK JP"), QStringLiteral("VL PGothic")}
                      : QStringList{QStringLiteral("Noto Serif CJK JP"), QStringLiteral("IPAPGothic")};
    if (script == QLatin1String("zh-Hant"))
        return tuning
                   ? QStringList{QStringLiteral("Noto Sans CJK TC"), QStringLiteral("WenQuanYi Zen Hei")}
                   : QStringList{QStringLiteral("Noto Serif CJK TC"), QStringLiteral("WenQuanYi Micro Hei"),
                                 QStringLiteral("Droid Sans Fallback")};
    return tuning ? QStringList{QStringLiteral("Noto Sans CJK SC"), QStringLiteral("WenQuanYi Zen Hei")}
                  : QStringList{QStringLiteral("Noto Serif CJK SC"), QStringLiteral("WenQuanYi Micro Hei"),
                                QStringLiteral("Droid Sans Fallback")};
}

} // namespace

Look makeLook(Dice& dice, Half half, const QString& script, Face face)
{
    const bool tuning = half == Half::Tuning;
    const Colours colours = dice.pick(tuning ? kTuningColours : kReportingColours);
    Look look;
    const QString latin = dice.pick(latinFamilies(half, face));
    const QString wide = dice.pick(wideFamilies(half, script));
    look.font.setFamilies({latin, wide});
    look.font.setPixelSize(dice.between(kSmallest, kLargest));
    look.background = QColor(QLatin1String(colours.background));
    look.text = QColor(QLatin1String(colours.text));
    look.secondary = QColor(QLatin1String(colours.secondary));
    look.card = QColor(QLatin1String(colours.card));
    look.accent =
        QColor(dice.pick(tuning ? QStringList{QStringLiteral("#2460d6"), QStringLiteral("#9a4f00")}
                                : QStringList{QStringLiteral("#1a7a43"), QStringLiteral("#a51d2d")}));
    look.dark = colours.dark;
    look.scale = dice.oneIn(3) ? 2 : 1;
    look.smoothing = look.scale == 1 && dice.oneIn(2) ? Smoothing::Subpixel : Smoothing::Grey;
    return look;
}

} // namespace tessary::bench
