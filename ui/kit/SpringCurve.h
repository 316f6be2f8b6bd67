#pragma once

#include <chrono>

namespace tessary {

/// The way of something that a spring pulls from 0 to 1.
class SpringCurve {
public:
    /// @param response the time of one swing without damping, in seconds.
    /// @param dampingFraction below 1 it swings beyond its goal, and at 0 for ever.
    constexpr SpringCurve(double response, double dampingFraction)
        : m_response(response),
          m_dampingFraction(dampingFraction)
    {
    }

    /// Where it is after so many seconds; may be above 1 on the way.
    [[nodiscard]] double at(double seconds) const;
    /// After which it stays within a thousandth of its goal.
    [[nodiscard]] std::chrono::milliseconds settlingTime() const;

private:
    double m_response;
    double m_dampingFraction;
};

} // namespace tessary
