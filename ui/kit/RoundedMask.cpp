#include "ui/kit/RoundedMask.h"

#include <QRect>

#include <cmath>

namespace tessary {

QRegion roundedMask(const QSize& size, int radius)
{
    QRegion region(QRect(0, radius, size.width(), size.height() - 2 * radius));
    for (int row = 0; row < radius; ++row) {
        const double fromCentre = radius - row - 0.5;
        const int inset =
            radius - static_cast<int>(std::lround(std::sqrt(radius * radius - fromCentre * fromCentre)));
        const int width = size.width() - 2 * inset;
        region += QRect(inset, row, width, 1);
        region += QRect(inset, size.height() - 1 - row, width, 1);
    }
    return region;
}

} // namespace tessary
