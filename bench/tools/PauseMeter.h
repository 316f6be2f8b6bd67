#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace tessary::bench {

/// The longest time for which the event loop of this thread did not come round. Costs a turn each
/// millisecond.
class PauseMeter {
public:
    PauseMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { note(); });
        m_sinceTurn.start();
        m_timer.start(kInterval);
    }
    /// In milliseconds.
    [[nodiscard]] double longest() const { return static_cast<double>(m_longest) / 1e6; }
    /// The same in processor time of this thread: on a busy machine the rest was somebody else's.
    [[nodiscard]] double longestWork() const { return static_cast<double>(m_longestWork) / 1e6; }

private:
    static constexpr int kInterval = 1; // ms

    void note()
    {
        m_longest = std::max(m_longest, m_sinceTurn.nsecsElapsed() - kInterval * 1'000'000);
        m_sinceTurn.restart();
        const qint64 work = processorTime();
        m_longestWork = std::max(m_longestWork, work - m_lastWork);
        m_lastWork = work;
    }
    /// In nanoseconds.
    static qint64 processorTime()
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec * 1'000'000'000 + time.tv_nsec;
    }

    QTimer m_timer;
    QElapsedTimer m_sinceTurn;
    qint64 m_longest = 0;
    qint64 m_lastWork = processorTime();
    qint64 m_longestWork = 0;
};

} // namespace tessary::bench
