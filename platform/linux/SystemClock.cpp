#include "platform/linux/SystemClock.h"

#include <QTimer>

#include <qcoro/qcorotimer.h>

namespace tessary {
namespace {

class QtRepeatingTimer : public RepeatingTimer {
public:
    QtRepeatingTimer(std::chrono::milliseconds interval, const std::function<void()>& callback)
    {
        m_timer.setTimerType(Qt::CoarseTimer);
        m_timer.setInterval(interval);
        QObject::connect(&m_timer, &QTimer::timeout, callback);
        m_timer.start();
    }

private:
    QTimer m_timer;
};

} // namespace

Date SystemClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date{std::chrono::duration<double>(sinceEpoch).count()};
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds duration)
{
    // At least a turn of the event loop, also for a duration of nothing.
    co_await QCoro::sleepFor(std::max(duration, std::chrono::milliseconds::zero()));
}

std::unique_ptr<RepeatingTimer> SystemClock::repeat(std::chrono::milliseconds interval,
                                                    std::function<void()> callback)
{
    return std::make_unique<QtRepeatingTimer>(interval, callback);
}

} // namespace tessary
