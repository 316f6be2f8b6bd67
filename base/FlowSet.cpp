#include "base/FlowSet.h"

#include <QtGlobal>

#include <utility>

namespace tessary {
namespace {

/// Suspends until somebody resumes the handle that it leaves in the list.
struct Parking {
    std::vector<std::coroutine_handle<>>& list;

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle) { list.push_back(handle); }
    void await_resume() const noexcept {}
};

} // namespace

FlowSet::FlowSet(std::function<void(const std::exception&)> onError) : m_onError(std::move(onError)) {}

void FlowSet::add(QCoro::Task<> flow)
{
    run(std::move(flow));
}

QCoro::Task<> FlowSet::run(QCoro::Task<> flow)
{
    const Stay stay(*this);
    try {
        co_await flow;
    } catch (const std::exception& error) {
        m_onError(error);
    }
}

void FlowSet::leave()
{
    if (--m_running > 0)
        return;
    for (const std::coroutine_handle<> waiting : std::exchange(m_waiting, {}))
        waiting.resume();
}

QCoro::Task<> FlowSet::drained()
{
    while (m_running > 0)
        co_await Parking{m_waiting};
}

} // namespace tessary
