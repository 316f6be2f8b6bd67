#include "platform/testing/FakeClock.h"

namespace tessary::testing {

class FakeClock::Sleep {
public:
    Sleep(FakeClock& clock, Moment due) : m_clock(clock), m_due(due) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> awaiting) { m_clock.schedule(m_due, {awaiting, {}}); }
    void await_resume() const noexcept {}

private:
    FakeClock& m_clock;
    Moment m_due;
};

class FakeClock::Timer {
public:
    Timer(Moment interval, std::function<void()> callback)
        : m_interval(interval),
          m_callback(std::move(callback))
    {
    }

    [[nodiscard]] Moment interval() const { return m_interval; }
    void call() const { m_callback(); }

private:
    Moment m_interval;
    std::function<void()> m_callback;
};

Date FakeClock::now() const
{
    return m_start.addingSeconds(std::chrono::duration<double>(m_elapsed.load()).count());
}

QCoro::Task<> FakeClock::sleep(std::chrono::milliseconds duration)
{
    co_await Sleep(*this, m_elapsed.load() + std::max(duration, Moment::zero()));
}

std::unique_ptr<RepeatingTimer> FakeClock::repeat(std::chrono::milliseconds interval,
                                                  std::function<void()> callback)
{
    struct Handle : RepeatingTimer {
        explicit Handle(std::shared_ptr<Timer> running) : timer(std::move(running)) {}
        std::shared_ptr<Timer> timer;
    };
    Q_ASSERT(interval > Moment::zero());
    auto timer = std::make_shared<Timer>(interval, std::move(callback));
    schedule(m_elapsed.load() + interval, {nullptr, timer});
    return std::make_unique<Handle>(std::move(timer));
}

void FakeClock::advance(std::chrono::milliseconds duration)
{
    const Moment end = m_elapsed.load() + duration;
    while (!m_events.empty() && m_events.begin()->first.first <= end) {
        const auto [key, event] = *m_events.begin();
        m_events.erase(m_events.begin());
        m_elapsed = std::max(m_elapsed.load(), key.first);
        fire(event);
    }
    m_elapsed = end;
}

void FakeClock::fire(const Event& event)
{
    if (event.sleeper) {
        event.sleeper.resume();
        return;
    }
    if (const std::shared_ptr<Timer> timer = event.timer.lock()) {
        timer->call();
        schedule(m_elapsed.load() + timer->interval(), event);
    }
}

void FakeClock::setNow(Date date)
{
    const double elapsed = std::chrono::duration<double>(m_elapsed.load()).count();
    m_start = date.addingSeconds(-elapsed);
}

int FakeClock::sleeping() const
{
    return static_cast<int>(std::count_if(m_events.begin(), m_events.end(),
                                          [](const auto& entry) { return entry.second.sleeper != nullptr; }));
}

int FakeClock::timers() const
{
    return static_cast<int>(std::count_if(m_events.begin(), m_events.end(),
                                          [](const auto& entry) { return !entry.second.timer.expired(); }));
}

} // namespace tessary::testing
