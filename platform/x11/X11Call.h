#pragma once

#include "base/SerialLane.h"
#include "platform/x11/X11EventLoop.h"

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tessary {

/// Awaited, runs a function on the loop's thread and resumes the caller on its own with the result. The
/// function must not throw. A caller that waits when the loop stops is never resumed.
template <typename Result>
class X11Call {
public:
    X11Call(X11EventLoop& loop, std::function<Result()> call)
        : m_state(std::make_unique<State>(loop, std::move(call)))
    {
    }

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> awaiting)
    {
        m_state->loop.post([state = m_state.get(), awaiting] {
            state->result.emplace(state->call());
            state->home.resume(awaiting);
        });
    }
    Result await_resume() { return std::move(*m_state->result); }

private:
    struct State {
        State(X11EventLoop& eventLoop, std::function<Result()> toCall)
            : loop(eventLoop),
              call(std::move(toCall))
        {
        }

        X11EventLoop& loop;
        std::function<Result()> call;
        std::optional<Result> result;
        ThreadResumption home;
    };
    // On the heap, since the compiler moves awaiters into the coroutine's frame.
    std::unique_ptr<State> m_state;
};

} // namespace tessary
