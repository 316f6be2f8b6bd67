#include "ui/preview/PreviewZoom.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr double kPercent = 100;

/// To ten-thousandths: 1 - 0.2 - 0.2 is 0.6 then, and not a little more.
double rounded(double scale)
{
    constexpr double kParts = 10'000;
    return std::round(scale * kParts) / kParts;
}

} // namespace

double PreviewZoom::larger(double scale)
{
    return std::min(rounded(scale + kStep), kLargest);
}

double PreviewZoom::smaller(double scale)
{
    return std::max(rounded(scale - kStep), kSmallest);
}

double PreviewZoom::moved(double scale, double factor)
{
    return std::clamp(rounded(scale * factor), kSmallest, kLargest);
}

QString PreviewZoom::percentText(double scale)
{
    return QString::number(std::lround(scale * kPercent)) + QLatin1Char('%');
}

} // namespace tessary
