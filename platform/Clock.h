#pragma once

#include "base/Date.h"

#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tessary {

/// Calls back again and again while it lives.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// Time, as a seam: tests move it. Main thread only, except `now()`.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
    /// Resumes the caller when the duration has passed.
    [[nodiscard]] virtual QCoro::Task<> sleep(std::chrono::milliseconds duration) = 0;
    /// First call after one interval; missed calls are not made up for. Callbacks must not throw.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                                 std::function<void()> callback) = 0;
};

} // namespace tessary
