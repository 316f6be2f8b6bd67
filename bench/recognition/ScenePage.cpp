#include "bench/recognition/Pages.h"
#include "bench/recognition/Sheet.h"

#include <QFontMetricsF>
#include <QRegularExpression>

#include <algorithm>

namespace tessary::bench {
namespace {

struct Scene {
    Dice& dice;
    const Look& look;
    const QString& script;
    SourceTexts& texts;

    [[nodiscard]] QString icon() const
    {
        static const QList<QString> kIcons{QStringLiteral("trash"),
                                           QStringLiteral("photo"),
                                           QStringLiteral("magnifyingglass"),
                                           QStringLiteral("pin"),
                                           QStringLiteral("gearshape"),
                                           QStringLiteral("doc.on.doc"),
                                           QStringLiteral("folder"),
                                           QStringLiteral("star.fill"),
                                           QStringLiteral("checkmark.circle.fill"),
                                           QStringLiteral("clock"),
                                           QStringLiteral("keyboard"),
                                           QStringLiteral("xmark.circle.fill"),
                                           QStringLiteral("tag"),
                                           QStringLiteral("calendar"),
                                           QStringLiteral("exclamationmark.triangle.fill")};
        return dice.pick(kIcons);
    }
    [[nodiscard]] QString label() const { return texts.label(script); }
    [[nodiscard]] QFont bold() const
    {
        QFont font = look.font;
        font.setWeight(QFont::Bold);
        return font;
    }
    [[nodiscard]] QFont smaller() const
    {
        QFont font = look.font;
        font.setPixelSize(std::max(12, font.pixelSize() - 2));
        return font;
    }
    [[nodiscard]] qreal widthOf(const QString& text, const QFont& font) const
    {
        return QFontMetricsF(font).horizontalAdvance(text);
    }
    [[nodiscard]] qreal rowHeight() const { return look.font.pixelSize() * 1.4 + 12; }
    [[nodiscard]] QColor edge() const { return look.dark ? QColor(255, 255, 255, 45) : QColor(0, 0, 0, 45); }
};

Page finish(Sheet& sheet, qreal height)
{
    const QImage image = sheet.finish(height);
    return {image, sheet.truth()};
}

/// Icons with their words beside them, two rows.
Page toolbar(const Scene& scene)
{
    Sheet sheet(620, scene.look, scene.look.background);
    const qreal height = scene.rowHeight() + 8;
    for (int row = 0; row < 2; ++row) {
        const qreal centre = height * row + height / 2;
        sheet.box({0, height * row, 620, height - 1}, 0, row == 0 ? scene.look.card : scene.look.background);
        qreal x = 10;
        while (true) {
            const QString text = scene.label();
            if (x + 40 + scene.widthOf(text, scene.look.font) > 610)
                break;
            sheet.symbol({x, centre}, scene.icon(), 16, row == 0 ? scene.look.accent : scene.look.text);
            x += 24 + sheet.word({x + 24, centre}, text, scene.look.font, scene.look.text) + 24;
        }
        sheet.endRow();
    }
    return finish(sheet, 2 * height);
}

/// Rows with icons and shortcuts, one of them selected.
Page menu(const Scene& scene)
{
    Sheet sheet(340, scene.look, scene.look.card);
    const int rows = scene.dice.between(4, 8);
    const int selected = scene.dice.below(rows);
    const QStringList keys{QStringLiteral("Ctrl+C"), QStringLiteral("Ctrl+Shift+V"), QStringLiteral("F5"),
                           QStringLiteral("Alt+Enter"), QStringLiteral("Del")};
    qreal top = 6;
    for (int row = 0; row < rows; ++row) {
        const qreal centre = top + scene.rowHeight() / 2;
        QColor colour = scene.look.text;
        if (row == selected) {
            sheet.box({5, top, 330, scene.rowHeight()}, 5, scene.look.accent);
            colour = Qt::white;
        }
        if (scene.dice.oneIn(2))
            sheet.symbol({14, centre}, scene.icon(), 16, colour);
        const QString key = scene.dice.pick(keys);
        const qreal width = scene.widthOf(key, scene.look.font);
        const qreal used = sheet.word({38, centre}, scene.label(), scene.look.font, colour);
        if (38 + used + 20 < 324 - width)
            sheet.word({324 - width, centre}, key, scene.look.font,
                       row == selected ? colour : scene.look.secondary);
        sheet.endRow();
        top += scene.rowHeight();
        if (scene.dice.oneIn(4)) {
            sheet.box({14, top + 4, 312, 1}, 0, scene.edge());
            top += 9;
        }
    }
    return finish(sheet, top + 6);
}

/// Key words, strings and comments in colours of their own.
Page code(const Scene& scene)
{
    Sheet sheet(660, scene.look, scene.look.background);
    const bool dark = scene.look.dark;
    const QColor word(QLatin1String(dark ? "#7fa8ff" : "#0033b3"));
    const QColor quoted(QLatin1String(dark ? "#98c379" : "#067d17"));
    const QColor note(QLatin1String(dark ? "#a8adb8" : "#6a6f76"));
    static const QRegularExpression kToken(QStringLiteral(
        "(#.*)|('[^']*'|\"[^\"]*\")|\\b(def|class|if|else|elif|return|for|in|not|and|or|self|None|"
        "True|False|raise|while|try|except|import|from|as|with|is)\\b"));
    const QFontMetricsF metrics(scene.look.font);
    const qreal blank = metrics.horizontalAdvance(u' ');
    qreal centre = 20;
    for (const QString& line : scene.texts.code().split(u'\n')) {
        const qsizetype room = static_cast<qsizetype>(620 / blank);
        const QString shown = line.left(room);
        qsizetype done = 0;
        const auto write = [&](qsizetype end, const QColor& colour) {
            sheet.painter().setPen(colour);
            sheet.painter().setFont(scene.look.font);
            sheet.painter().drawText(
                QPointF(10 + blank * static_cast<qreal>(done), centre + metrics.ascent() / 2),
                shown.mid(done, end - done));
            done = end;
        };
        auto match = kToken.globalMatch(shown);
        while (match.hasNext()) {
            const QRegularExpressionMatch token = match.next();
            write(token.capturedStart(), scene.look.text);
            write(token.capturedEnd(), token.hasCaptured(3) && !token.captured(3).isEmpty() ? word
                                       : token.captured(2).isEmpty()                        ? note
                                                                                            : quoted);
        }
        write(shown.size(), scene.look.text);
        sheet.note(shown.trimmed());
        centre += metrics.height() * 1.15;
    }
    return finish(sheet, centre + 4);
}

/// Bubbles at the left and, coloured, at the right, with round pictures of people.
Page chat(const Scene& scene)
{
    Sheet sheet(460, scene.look, scene.look.background);
    qreal top = 10;
    for (int message = 0; message < 4 && top < 330; ++message) {
        const bool mine = message % 2 == 1;
        const QString text = message == 3 ? scene.label() : scene.texts.passage(scene.script).left(110);
        const qreal width = std::min(scene.widthOf(text, scene.look.font) + 2, 290.0);
        const qreal height = sheet.heightOf(text, scene.look.font, width, 1.3);
        const qreal left = mine ? 460 - 52 - width - 24 : 52;
        sheet.box({left, top, width + 24, height + 16}, 10, mine ? scene.look.accent : scene.look.card);
        sheet.box({mine ? 416.0 : 10.0, top, 34, 34}, 17, QColor::fromHsv(scene.dice.below(360), 120, 170));
        sheet.paragraph({left + 12, top + 8}, width, text, scene.look.font,
                        mine ? QColor(Qt::white) : scene.look.text, 1.3);
        top += height + 30;
    }
    return finish(sheet, top);
}

/// Ruled columns with a head, numbers in the last.
Page table(const Scene& scene)
{
    Sheet sheet(600, scene.look, scene.look.background);
    const bool ruled = scene.dice.oneIn(2);
    const int rows = scene.dice.between(4, 7);
    qreal top = 0;
    for (int row = 0; row < rows; ++row) {
        const qreal centre = top + scene.rowHeight() / 2;
        if (row == 0 || (!ruled && row % 2 == 0))
            sheet.box({0, top, 600, scene.rowHeight()}, 0, scene.look.card);
        const QFont font = row == 0 ? scene.bold() : scene.look.font;
        for (int column = 0; column < 3; ++column) {
            QString text =
                column == 2 && row > 0 ? QString::number(scene.dice.between(1, 99999)) : scene.label();
            while (scene.widthOf(text, font) > 160)
                text.chop(1);
            sheet.word({8.0 + 210 * column, centre}, text.trimmed(), font, scene.look.text);
        }
        sheet.endRow();
        top += scene.rowHeight();
        if (ruled)
            sheet.box({0, top - 1, 600, 1}, 0, scene.edge());
    }
    if (ruled)
        for (int column = 1; column < 3; ++column)
            sheet.box({210.0 * column - 2, 0, 1, top}, 0, scene.edge());
    return finish(sheet, top + 4);
}

/// A question with an icon, and two buttons.
Page dialog(const Scene& scene)
{
    Sheet sheet(480, scene.look, scene.look.background);
    sheet.symbol({20, 38}, QStringLiteral("exclamationmark.triangle.fill"), 32, scene.look.accent);
    qreal top = 20;
    top += sheet.paragraph({68, top}, 390, scene.label(), scene.bold(), scene.look.text) + 8;
    top += sheet.paragraph({68, top}, 390, scene.texts.passage(scene.script).left(160), scene.smaller(),
                           scene.look.secondary);
    top += 20;
    const qreal height = scene.rowHeight();
    const auto button = [&](qreal left, const QColor& fill, const QColor& colour) {
        const QString text = scene.label();
        const qreal width = scene.widthOf(text, scene.look.font);
        sheet.box({left, top, width + 28, height}, 6, fill, scene.edge());
        sheet.word({left + 14, top + height / 2}, text, scene.look.font, colour);
        return left + width + 28 + 12;
    };
    const qreal next = button(68, scene.look.card, scene.look.text);
    if (next < 290)
        button(next, scene.look.accent, Qt::white);
    return finish(sheet, top + height + 20);
}

/// Prompts in colour with messages of programs under them.
Page terminal(const Scene& scene)
{
    Sheet sheet(640, scene.look, scene.look.background);
    const QFontMetricsF metrics(scene.look.font);
    const QStringList commands{QStringLiteral("sudo apt-get update"), QStringLiteral("ls -l /usr/share/doc"),
                               QStringLiteral("git log --oneline -5"),
                               QStringLiteral("tar xf archive.tar.xz")};
    qreal top = 8;
    for (int block = 0; block < 3; ++block) {
        qreal x = 8;
        const qreal centre = top + metrics.height() / 2;
        x += sheet.word({x, centre}, QStringLiteral("user@debian:~$"), scene.bold(), scene.look.secondary);
        sheet.word({x + metrics.horizontalAdvance(u' '), centre}, scene.dice.pick(commands), scene.look.font,
                   scene.look.text);
        top += metrics.height() * 1.1;
        top += sheet.paragraph({8, top}, 624, scene.texts.passage(scene.script).left(120), scene.look.font,
                               scene.look.text, 1.25) +
               2;
    }
    return finish(sheet, top + 6);
}

/// Cards of rows with a word at the left, its value or a switch at the right.
Page settings(const Scene& scene)
{
    Sheet sheet(540, scene.look, scene.look.background);
    qreal top = 12;
    top += sheet.paragraph({24, top}, 500, scene.label(), scene.bold(), scene.look.text) + 8;
    const int rows = scene.dice.between(3, 5);
    const qreal height = scene.rowHeight() + 8;
    sheet.box({12, top, 516, height * rows}, 10, scene.look.card, scene.edge());
    for (int row = 0; row < rows; ++row) {
        const qreal centre = top + height / 2;
        sheet.symbol({24, centre}, scene.icon(), 16, scene.look.secondary);
        const qreal used = sheet.word({52, centre}, scene.label(), scene.look.font, scene.look.text);
        const QString value = scene.label();
        const qreal width = scene.widthOf(value, scene.look.font);
        if (scene.dice.oneIn(2) || used + width > 430) {
            sheet.box({480, centre - 10, 36, 20}, 10, scene.look.accent);
            sheet.box({498, centre - 8, 16, 16}, 8, Qt::white);
        } else {
            sheet.word({516 - width, centre}, value, scene.look.font, scene.look.secondary);
        }
        sheet.endRow();
        top += height;
        if (row + 1 < rows)
            sheet.box({52, top, 476, 1}, 0, scene.edge());
    }
    return finish(sheet, top + 14);
}

/// Bands of several colours, dark and light, as banners and web pages have them.
Page bands(const Scene& scene)
{
    Sheet sheet(580, scene.look, scene.look.background);
    qreal top = 0;
    const qreal height = scene.rowHeight() + 10;
    const auto band = [&](const QColor& fill, const QColor& colour, const QFont& font) {
        sheet.box({0, top, 580, height}, 0, fill);
        sheet.symbol({14, top + height / 2}, scene.icon(), 20, colour);
        sheet.word({46, top + height / 2}, scene.label(), font, colour);
        sheet.endRow();
        top += height;
    };
    band(scene.look.accent, Qt::white, scene.bold());
    top += 10;
    top += sheet.paragraph({14, top}, 552, scene.texts.passage(scene.script).left(150), scene.look.font,
                           scene.look.text) +
           10;
    band(QColor(QLatin1String("#fff3e0")), QColor(QLatin1String("#9a4f00")), scene.look.font);
    band(QColor(QLatin1String("#1d3529")), QColor(QLatin1String("#8fe0b6")), scene.smaller());
    return finish(sheet, top);
}

using Painter = Page (*)(const Scene&);

struct NamedScene {
    QString name;
    Painter paint;
    Face face;
};

const QList<NamedScene>& scenes()
{
    static const QList<NamedScene> kScenes{
        {QStringLiteral("toolbar"), &toolbar, Face::Proportional},
        {QStringLiteral("menu"), &menu, Face::Proportional},
        {QStringLiteral("code"), &code, Face::Monospaced},
        {QStringLiteral("chat"), &chat, Face::Proportional},
        {QStringLiteral("table"), &table, Face::Proportional},
        {QStringLiteral("dialog"), &dialog, Face::Proportional},
        {QStringLiteral("terminal"), &terminal, Face::Monospaced},
        {QStringLiteral("settings"), &settings, Face::Proportional},
        {QStringLiteral("bands"), &bands, Face::Proportional},
    };
    return kScenes;
}

} // namespace

QStringList sceneNames()
{
    QStringList names;
    for (const NamedScene& scene : scenes())
        names.append(scene.name);
    return names;
}

Page scenePage(const QString& name, Dice& dice, Half half, const QString& script, SourceTexts& texts)
{
    for (const NamedScene& scene : scenes()) {
        if (scene.name != name)
            continue;
        const Look look = makeLook(dice, half, script, scene.face);
        return scene.paint({dice, look, script, texts});
    }
    return {};
}

} // namespace tessary::bench
