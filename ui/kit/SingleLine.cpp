#include "ui/kit/SingleLine.h"

#include <QFontMetrics>
#include <QPainter>

namespace tessary {

int centredBaseline(const QFont& font, const QRect& area)
{
    const QFontMetrics metrics(font);
    return area.top() + (area.height() + metrics.ascent() - metrics.descent()) / 2;
}

void drawSingleLine(QPainter& painter, const QRect& area, const QString& text, Qt::Alignment alignment)
{
    const QFontMetrics metrics = painter.fontMetrics();
    int left = area.left();
    if (alignment.testFlag(Qt::AlignRight))
        left = area.right() + 1 - metrics.horizontalAdvance(text);
    else if (alignment.testFlag(Qt::AlignHCenter))
        left += (area.width() - metrics.horizontalAdvance(text)) / 2;
    painter.drawText(left, centredBaseline(painter.font(), area), text);
}

} // namespace tessary
