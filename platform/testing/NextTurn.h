#pragma once

#include <QTimer>

#include <coroutine>

namespace tessary::testing {

/// Awaited, resumes the caller in a later turn of the event loop: what a fake does where the real thing
/// would ask a server.
class NextTurn {
public:
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> awaiting) const
    {
        QTimer::singleShot(0, [awaiting] { awaiting.resume(); });
    }
    void await_resume() const noexcept {}
};

} // namespace tessary::testing
