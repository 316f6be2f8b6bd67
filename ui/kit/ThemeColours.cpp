#include "ui/kit/ThemeColours.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr double kReadable = 4.5;

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

ThemeColours lightColours()
{
    ThemeColours colours;
    colours.window = QColor(0xF6, 0xF6, 0xF7);
    colours.surface = QColor(0xFF, 0xFF, 0xFF);
    colours.raised = QColor(0xEF, 0xEF, 0xF1);
    colours.pressed = QColor(0xE3, 0xE3, 0xE7);
    colours.mat = QColor(0xE9, 0xE9, 0xEC);
    colours.hairline = black(0.10);
    colours.edge = black(0.14);
    colours.solidEdge = QColor(0xC4, 0xC4, 0xC8);
    colours.text = QColor(0x1C, 0x1C, 0x1E);
    colours.secondaryText = QColor(0x63, 0x63, 0x66);
    colours.placeholderText = QColor(0x6E, 0x6E, 0x74);
    colours.tertiary = QColor(0x80, 0x80, 0x86);
    colours.accent = QColor(0x24, 0x60, 0xD6);
    colours.accentText = QColor(0x24, 0x60, 0xD6);
    colours.accentTint = QColor(0xE4, 0xEC, 0xFB);
    colours.accentTintHover = QColor(0xDC, 0xE7, 0xFB);
    colours.onAccent = QColor(0xFF, 0xFF, 0xFF);
    colours.secondaryOnAccent = QColor(0xE3, 0xEB, 0xFC);
    colours.warning = QColor(0x9A, 0x4F, 0x00);
    colours.warningFill = QColor(0xFF, 0xF3, 0xE0);
    colours.danger = QColor(0xBC, 0x2A, 0x30);
    colours.success = QColor(0x1A, 0x7A, 0x43);
    colours.successFill = QColor(0xE6, 0xF4, 0xEB);
    colours.keyCapLine = black(0.12);
    colours.switchedOff = QColor(0x8E, 0x8E, 0x94);
    colours.pictureLine = black(0.12);
    colours.nearShadow = black(0.10);
    colours.farShadow = black(0.22);
    return colours;
}

ThemeColours darkColours()
{
    ThemeColours colours;
    colours.window = QColor(0x1E, 0x1E, 0x20);
    colours.surface = QColor(0x28, 0x28, 0x2B);
    colours.raised = QColor(0x34, 0x34, 0x38);
    colours.pressed = QColor(0x40, 0x40, 0x46);
    colours.mat = QColor(0x16, 0x16, 0x18);
    colours.hairline = white(0.10);
    colours.edge = white(0.16);
    colours.solidEdge = QColor(0x4A, 0x4A, 0x4F);
    colours.text = QColor(0xF2, 0xF2, 0xF4);
    colours.secondaryText = QColor(0xA5, 0xA5, 0xAB);
    colours.placeholderText = QColor(0x94, 0x94, 0x9B);
    colours.tertiary = QColor(0x85, 0x85, 0x8C);
    colours.accent = QColor(0x33, 0x66, 0xD9);
    colours.accentText = QColor(0x7F, 0xA8, 0xFF);
    colours.accentTint = QColor(0x25, 0x2F, 0x46);
    colours.accentTintHover = QColor(0x2D, 0x3A, 0x57);
    colours.onAccent = QColor(0xFF, 0xFF, 0xFF);
    colours.secondaryOnAccent = QColor(0xEB, 0xF1, 0xFF);
    colours.warning = QColor(0xFF, 0xB4, 0x54);
    colours.warningFill = QColor(0x3A, 0x2C, 0x18);
    colours.danger = QColor(0xFF, 0x83, 0x83);
    colours.success = QColor(0x4C, 0xC3, 0x8A);
    colours.successFill = QColor(0x1D, 0x35, 0x29);
    colours.keyCapLine = white(0.14);
    colours.switchedOff = QColor(0x7A, 0x7A, 0x82);
    colours.pictureLine = white(0.12);
    colours.nearShadow = black(0.35);
    colours.farShadow = black(0.60);
    return colours;
}

double linear(double channel)
{
    constexpr double kKnee = 0.03928;
    return channel <= kKnee ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// Darker, or lighter, until it is readable against the other colour.
QColor readable(const QColor& colour, const QColor& against, bool isDarker)
{
    constexpr float kStep = 0.04F;
    QColor moved = colour.toHsl();
    while (contrastRatio(moved, against) < kReadable) {
        const float lightness = moved.lightnessF() + (isDarker ? -kStep : kStep);
        moved.setHslF(moved.hslHueF(), moved.hslSaturationF(), std::clamp(lightness, 0.0F, 1.0F));
        if (lightness <= 0 || lightness >= 1)
            break;
    }
    return moved.toRgb();
}

QColor mixed(const QColor& colour, const QColor& into, double share)
{
    const auto channel = [share](int top, int bottom) {
        return static_cast<int>(std::lround(top * share + bottom * (1 - share)));
    };
    return {channel(colour.red(), into.red()), channel(colour.green(), into.green()),
            channel(colour.blue(), into.blue())};
}

void takeAccent(ThemeColours& colours, const QColor& accent, bool isDark)
{
    constexpr double kTint = 0.12;
    constexpr double kTintHover = 0.18;
    constexpr double kOnAccentShare = 0.88;
    const QColor opaque(accent.red(), accent.green(), accent.blue());
    colours.accent = readable(opaque, colours.onAccent, true);
    colours.accentText = readable(opaque, colours.window, !isDark);
    colours.accentTint = mixed(opaque, colours.window, kTint);
    colours.accentTintHover = mixed(opaque, colours.window, kTintHover);
    for (const QColor& beneath : {colours.surface, colours.accentTint, colours.accentTintHover})
        colours.accentText = readable(colours.accentText, beneath, !isDark);
    colours.secondaryOnAccent =
        readable(mixed(colours.onAccent, colours.accent, kOnAccentShare), colours.accent, false);
}

} // namespace

double contrastRatio(const QColor& first, const QColor& second)
{
    const double one = luminance(first);
    const double other = luminance(second);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

ThemeColours themeColours(bool isDark, const std::optional<QColor>& accent)
{
    ThemeColours colours = isDark ? darkColours() : lightColours();
    if (accent && accent->isValid())
        takeAccent(colours, *accent, isDark);
    return colours;
}

} // namespace tessary
