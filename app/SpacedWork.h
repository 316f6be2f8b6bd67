#pragma once

#include "base/FlowSet.h"
#include "base/KeyedGate.h"
#include "platform/Clock.h"

#include <qcoro/qcorotask.h>

#include <functional>

namespace tessary {

/// Work that many events ask for and that need not be done for each of them: one run at a time, and between
/// those that nobody waits for a rest. A request during a run or a rest leads to one more run afterwards, so
/// that the last one always begins after the last request. Main thread only.
class SpacedWork {
public:
    using Work = std::function<QCoro::Task<>()>;

    /// @param work must not throw. @param flows keep the runs, and by their stop end the rests.
    /// @param rest at least; after a long run twenty times its duration.
    SpacedWork(Clock& clock, FlowSet& flows, Work work, std::chrono::milliseconds rest);

    /// Runs now or, after the rest, soon.
    void request();
    /// Runs now, or as soon as the present run has ended. Ends with a run that began after this was called;
    /// several that wait share one.
    [[nodiscard]] QCoro::Task<> now();

private:
    void rest(std::chrono::milliseconds lastRun);
    void restIsOver();

    Clock& m_clock;
    FlowSet& m_flows;
    Work m_work;
    std::chrono::milliseconds m_shortestRest;
    KeyedGate m_turn;
    quint64 m_begun = 0; // runs
    bool m_isRequested = false;
    std::unique_ptr<RepeatingTimer> m_rest; // null while none is needed
};

} // namespace tessary
