#include "ui/kit/TextScale.h"

#include <cmath>

namespace tessary {

double remainingTextScale(double wanted, double screenScale)
{
    constexpr double kSlack = 0.02; // resolutions are whole numbers of dots
    const double windows = screenScale / wanted;
    const double whole = std::round(windows);
    const bool isInResolution = whole >= 1 && std::abs(windows - whole) < kSlack * whole;
    return isInResolution ? 1 : wanted;
}

} // namespace tessary
