#include "app/SpacedWork.h"

#include <QElapsedTimer>

namespace tessary {
namespace {

constexpr int kRestPerWork = 20;

QString onlyKey()
{
    return QStringLiteral("run");
}

} // namespace

SpacedWork::SpacedWork(Clock& clock, FlowSet& flows, Work work, std::chrono::milliseconds rest)
    : m_clock(clock),
      m_flows(flows),
      m_work(std::move(work)),
      m_shortestRest(rest)
{
}

void SpacedWork::request()
{
    m_isRequested = true;
    if (!m_rest && !m_turn.isHeld(onlyKey()))
        m_flows.add(now());
}

QCoro::Task<> SpacedWork::now()
{
    const FlowSet::Stay stay(m_flows);
    const quint64 begunBefore = m_begun;
    auto entrance = m_turn.enter(onlyKey());
    const KeyedGate::Pass pass = co_await entrance;
    if (m_begun > begunBefore || m_flows.stopToken().stop_requested())
        co_return;
    ++m_begun;
    m_isRequested = false;
    QElapsedTimer watch;
    watch.start();
    co_await m_work();
    rest(std::chrono::milliseconds(watch.elapsed()));
}

void SpacedWork::rest(std::chrono::milliseconds lastRun)
{
    if (!m_flows.stopToken().stop_requested())
        m_rest = m_clock.repeat(std::max(m_shortestRest, lastRun * kRestPerWork), [this] { restIsOver(); });
}

void SpacedWork::restIsOver()
{
    m_rest.reset();
    if (m_isRequested && !m_flows.stopToken().stop_requested())
        request();
}

} // namespace tessary
