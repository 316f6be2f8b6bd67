#pragma once

#include <qcoro/qcorotask.h>

#include <coroutine>
#include <exception>
#include <functional>
#include <stop_token>
#include <vector>

namespace tessary {

/// The running flows of one owner, so that none is fired and forgotten. Main thread only.
///
/// An escaped error goes to the handler. The owner drains the set before it destroys what its flows use.
class FlowSet {
public:
    /// As long as it lives, the set counts one more running flow: for a coroutine that its caller awaits, but
    /// that uses the owner.
    class Stay {
    public:
        explicit Stay(FlowSet& flows) : m_flows(flows) { ++flows.m_running; }
        ~Stay() { m_flows.leave(); }
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

    private:
        FlowSet& m_flows;
    };

    explicit FlowSet(std::function<void(const std::exception&)> onError);

    /// Takes a flow that has begun and keeps it until it ends.
    void add(QCoro::Task<> flow);
    /// Asks the flows to end soon; each looks at the token after an await.
    void cancel() { m_stop.request_stop(); }
    [[nodiscard]] std::stop_token stopToken() const { return m_stop.get_token(); }
    [[nodiscard]] bool isEmpty() const { return m_running == 0; }
    /// Ends when no flow is running.
    [[nodiscard]] QCoro::Task<> drained();

private:
    QCoro::Task<> run(QCoro::Task<> flow);
    void leave();

    std::function<void(const std::exception&)> m_onError;
    std::stop_source m_stop;
    int m_running = 0;
    std::vector<std::coroutine_handle<>> m_waiting;
};

} // namespace tessary
