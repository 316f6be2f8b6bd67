#pragma once

#include <coroutine>
#include <utility>
#include <vector>

namespace tessary {

/// Something that happens once, and that flows can wait for. Main thread only; outlives who waits.
class Milestone {
public:
    struct Wait {
        Milestone& milestone;

        [[nodiscard]] bool await_ready() const noexcept { return milestone.m_isReached; }
        void await_suspend(std::coroutine_handle<> flow) const { milestone.m_waiting.push_back(flow); }
        void await_resume() const noexcept {}
    };

    [[nodiscard]] bool isReached() const { return m_isReached; }
    /// Goes on at once when it has happened already.
    [[nodiscard]] Wait reached() { return {*this}; }
    /// Lets everybody go on who waits. Twice is fine.
    void reach()
    {
        m_isReached = true;
        for (const std::coroutine_handle<> flow : std::exchange(m_waiting, {}))
            flow.resume();
    }

private:
    bool m_isReached = false;
    std::vector<std::coroutine_handle<>> m_waiting;
};

} // namespace tessary
