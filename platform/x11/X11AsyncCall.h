#pragma once

#include "base/SerialLane.h"
#include "platform/x11/X11EventLoop.h"

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tessary {

/// Awaited, starts something on the loop's thread that ends there later, and resumes the caller on its own
/// thread with the result. What was started calls `Done` exactly once, on the loop's thread. A caller that
/// waits when the loop stops is never resumed.
template <typename Result>
class X11AsyncCall {
public:
    using Done = std::function<void(Result)>;

    X11AsyncCall(X11EventLoop& loop, std::function<void(Done)> start)
        : m_state(std::make_unique<State>(loop, std::move(start)))
    {
    }

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> awaiting)
    {
        m_state->loop.post([state = m_state.get(), awaiting] {
            // Taken out: once the result is there the caller may go on and destroy the state.
            const auto start = std::move(state->start);
            start([state, awaiting](Result result) {
                state->result.emplace(std::move(result));
                state->home.resume(awaiting);
            });
        });
    }
    Result await_resume() { return std::move(*m_state->result); }

private:
    struct State {
        State(X11EventLoop& eventLoop, std::function<void(Done)> toStart)
            : loop(eventLoop),
              start(std::move(toStart))
        {
        }

        X11EventLoop& loop;
        std::function<void(Done)> start;
        std::optional<Result> result;
        ThreadResumption home;
    };
    // On the heap, since the compiler moves awaiters into the coroutine's frame.
    std::unique_ptr<State> m_state;
};

} // namespace tessary
