#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace tessary {

/// Functions to be called at points in time, earliest first, equal ones in the order added. One thread.
class DeadlineQueue {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Id = quint64; ///< Never 0, never used twice.

    Id add(TimePoint when, std::function<void()> call);
    /// Unknown, past and cancelled ones are ignored.
    void remove(Id id);
    /// When the next call is due; nothing when none is pending.
    [[nodiscard]] std::optional<TimePoint> next() const;
    /// Calls what is due at that time. What these calls add waits for the next time, even if it is due.
    void runDue(TimePoint now);

private:
    std::map<std::pair<TimePoint, Id>, std::function<void()>> m_calls;
    Id m_lastId = 0;
};

} // namespace tessary
