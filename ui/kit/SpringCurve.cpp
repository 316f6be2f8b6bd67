#include "ui/kit/SpringCurve.h"

#include <cmath>
#include <numbers>

namespace tessary {

double SpringCurve::at(double seconds) const
{
    const double stiffness = 2 * std::numbers::pi / m_response;
    const double decay = m_dampingFraction * stiffness;
    const double envelope = std::exp(-decay * seconds);
    if (m_dampingFraction >= 1)
        return 1 - envelope * (1 + stiffness * seconds);
    const double swing = stiffness * std::sqrt(1 - m_dampingFraction * m_dampingFraction);
    return 1 - envelope * (std::cos(swing * seconds) + decay / swing * std::sin(swing * seconds));
}

std::chrono::milliseconds SpringCurve::settlingTime() const
{
    constexpr double kNear = 0.001;
    constexpr std::chrono::milliseconds kStep{10};
    constexpr std::chrono::milliseconds kLongest{5000};
    std::chrono::milliseconds settled{0};
    for (auto time = kStep; time <= kLongest; time += kStep)
        if (std::abs(at(std::chrono::duration<double>(time).count()) - 1) > kNear)
            settled = time;
    return settled + kStep;
}

} // namespace tessary
