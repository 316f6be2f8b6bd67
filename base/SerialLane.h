#pragma once

#include "base/LaneQueue.h"

#include <QObject>

#include <concepts>
#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>

namespace tessary {

/// Runs work one item at a time, in the order posted, on a thread of its own.
///
/// An actor owns its lane as its last member: destruction waits for what was posted, so no work outlives
/// what it uses. The thread starts with the first work and sleeps without wake-ups while there is none.
class SerialLane {
public:
    template <typename Result>
    class Posted;

    /// @param name shown by a debugger, cut to 15 bytes by the kernel.
    explicit SerialLane(QString name);
    ~SerialLane();
    SerialLane(const SerialLane&) = delete;
    SerialLane& operator=(const SerialLane&) = delete;

    /// Runs the work on the lane once awaited, and resumes the caller on its own thread (which needs an
    /// event loop), with the result or with the very exception that the work threw.
    ///
    /// To be named before it is awaited: `auto work = lane.post(…); co_await work;`. Inside a co_await
    /// expression g++ 12 destroys what a closure captured twice, so that does not compile.
    template <std::invocable Work>
    [[nodiscard]] auto post(Work work)
    {
        return Posted<std::invoke_result_t<Work>>(*this, std::move(work));
    }

    /// Runs the work on the lane without anybody waiting for it. It must not throw.
    void postDetached(std::function<void()> work);

    [[nodiscard]] const QString& name() const { return m_name; }

private:
    QString m_name;
    LaneQueue m_queue;
    std::once_flag m_started;
    std::jthread m_thread; // last: it uses all of the above
};

/// Resumes a coroutine on the thread that made this, through that thread's event loop.
class ThreadResumption {
public:
    ThreadResumption() : m_home(new QObject) {}
    ~ThreadResumption() { m_home->deleteLater(); }
    ThreadResumption(const ThreadResumption&) = delete;
    ThreadResumption& operator=(const ThreadResumption&) = delete;

    void resume(std::coroutine_handle<> coroutine)
    {
        call([coroutine] { coroutine.resume(); });
    }
    /// Calls the function there, unless this is gone by then.
    void call(const std::function<void()>& function)
    {
        QMetaObject::invokeMethod(m_home, function, Qt::QueuedConnection);
    }

private:
    QObject* m_home;
};

/// Work that waits to be awaited. `Awaiter` is a mere pointer to it, which the compiler may copy.
template <typename Result>
class SerialLane::Posted {
public:
    Posted(SerialLane& lane, std::function<Result()> work)
        : m_state(std::make_unique<State>(lane, std::move(work)))
    {
    }

    [[nodiscard]] auto operator co_await() const& noexcept { return Awaiter{m_state.get()}; }
    void operator co_await() const&& = delete;

private:
    struct Nothing {};
    struct State {
        State(SerialLane& workLane, std::function<Result()> toDo) : lane(workLane), work(std::move(toDo)) {}

        /// On the lane. The work itself is destroyed at home: it may own what belongs there.
        void run() noexcept
        {
            try {
                if constexpr (std::is_void_v<Result>)
                    work();
                else
                    result.emplace(work());
            } catch (...) {
                error = std::current_exception();
            }
        }

        SerialLane& lane;
        std::function<Result()> work;
        std::optional<std::conditional_t<std::is_void_v<Result>, Nothing, Result>> result;
        std::exception_ptr error;
        ThreadResumption home;
    };
    struct Awaiter {
        State* state;

        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> awaiting) const
        {
            state->lane.postDetached([work = state, awaiting] {
                work->run();
                work->home.resume(awaiting);
            });
        }
        Result await_resume() const
        {
            if (state->error)
                std::rethrow_exception(state->error);
            if constexpr (!std::is_void_v<Result>)
                return std::move(*state->result);
        }
    };

    std::unique_ptr<State> m_state;
};

} // namespace tessary
