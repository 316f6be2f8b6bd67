#include "bench/recognition/Pages.h"
#include "bench/recognition/Sheet.h"

namespace tessary::bench {
namespace {

constexpr qreal kTallestText = 260;

} // namespace

Page textPage(Dice& dice, Half half, const QString& script, Mixture mixture, SourceTexts& texts)
{
    const Face face = dice.oneIn(6) ? Face::Monospaced : Face::Proportional;
    const Look look = makeLook(dice, half, script, face);
    const QString kind = mixture == Mixture::WithLatin ? QStringLiteral("mixed-") + script : script;
    const int margin = dice.between(6, 24);
    Sheet sheet(dice.between(260, 640), look, look.background);
    qreal top = margin;
    qreal left = margin;
    qreal width = sheet.width() - 2 * margin;
    if (dice.oneIn(4)) { // a title
        QFont title = look.font;
        title.setPixelSize(title.pixelSize() + 4);
        title.setWeight(QFont::Bold);
        top += sheet.paragraph({left, top}, width, texts.label(script), title, look.text) + 10;
    }
    if (dice.oneIn(4)) { // a quotation, with a bar at its left
        left += 14;
        width -= 14;
    }
    const qreal start = top;
    const qreal lineHeight = 1.2 + 0.1 * dice.below(5);
    const QColor colour = dice.oneIn(5) ? look.secondary : look.text;
    for (int count = dice.between(1, 3); count > 0; --count) {
        const QString passage = texts.passage(kind);
        if (top > start && top + sheet.heightOf(passage, look.font, width, lineHeight) > start + kTallestText)
            break;
        top += sheet.paragraph({left, top}, width, passage, look.font, colour, lineHeight) + 8;
    }
    if (left > margin)
        sheet.box({left - 14, start, 3, top - start - 8}, 1, look.accent);
    const QImage image = sheet.finish(top - 8 + margin);
    return {image, sheet.truth()};
}

} // namespace tessary::bench
