#pragma once

#include "platform/Clock.h"

#include <atomic>
#include <coroutine>
#include <map>

namespace tessary::testing {

/// Time that stands still until a test moves it.
class FakeClock : public Clock {
public:
    explicit FakeClock(Date start = Date{1'700'000'000}) : m_start(start) {}
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;

    [[nodiscard]] Date now() const override;
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
    /// The timer may be destroyed in its own callback, and after the clock.
    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override;

    /// Moves time on, stopping at each timer and sleep that falls due, earliest first and equal ones in the
    /// order asked for; `now()` is the due time meanwhile. What these ask for is served too if it is due.
    /// Not to be called from a callback.
    void advance(std::chrono::milliseconds duration);
    /// Sets the date without anything falling due, as when the person sets the clock.
    void setNow(Date date);
    /// How many flows are asleep. A test waits for a flow to fall asleep before it moves time.
    [[nodiscard]] int sleeping() const;
    /// How many repeating timers live.
    [[nodiscard]] int timers() const;

private:
    class Sleep;
    class Timer;
    struct Event {
        std::coroutine_handle<> sleeper; ///< Null for a timer.
        std::weak_ptr<Timer> timer;
    };
    using Moment = std::chrono::milliseconds; ///< Since the clock was made.

    void schedule(Moment due, Event event) { m_events.emplace(std::pair(due, ++m_lastNumber), event); }
    void fire(const Event& event);

    Date m_start;
    std::atomic<Moment> m_elapsed{Moment::zero()};
    std::map<std::pair<Moment, quint64>, Event> m_events;
    quint64 m_lastNumber = 0;
};

} // namespace tessary::testing
