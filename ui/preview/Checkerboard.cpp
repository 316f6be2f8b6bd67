#include "ui/preview/Checkerboard.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

void paintCheckerboard(QPainter& painter, const Theme& theme, const QRectF& area)
{
    constexpr int kSquare = 8;
    QPixmap pattern(2 * kSquare, 2 * kSquare);
    pattern.fill(theme.colours().surface);
    QPainter squares(&pattern);
    squares.fillRect(0, 0, kSquare, kSquare, theme.colours().raised);
    squares.fillRect(kSquare, kSquare, kSquare, kSquare, theme.colours().raised);
    squares.end();
    painter.fillRect(area, QBrush(pattern));
}

} // namespace tessary
