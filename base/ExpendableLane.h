#pragma once

#include "base/Error.h"
#include "base/SerialLane.h"

namespace tessary {

/// The work was given up: it had not come back, and nobody waits for it any more.
class Abandoned : public Error {
public:
    [[nodiscard]] QString localizedDescription() const override;
};

/// A lane for work that may never come back, such as calls into a file system that hangs.
///
/// It differs from `SerialLane` in what it waits for: nothing. Its thread is on its own and goes when it has
/// done what was posted; one that hangs stays behind until its call returns or the process ends, and keeps
/// nobody from quitting. So work owns all that it uses, and touches nothing of its poster.
class ExpendableLane {
public:
    template <typename Result>
    class Posted;

    explicit ExpendableLane(QString name);
    ~ExpendableLane();
    ExpendableLane(const ExpendableLane&) = delete;
    ExpendableLane& operator=(const ExpendableLane&) = delete;

    /// Runs the work once awaited, and resumes the caller on its own thread, with the result or with the
    /// very exception that the work threw. Once the token is stopped the caller is resumed with `Abandoned`
    /// instead, in a later turn of its event loop; the work goes on, and its result is dropped.
    ///
    /// To be named before it is awaited, for the reason given at `SerialLane::post`.
    template <std::invocable Work>
    [[nodiscard]] auto post(Work work, std::stop_token giveUp = {})
    {
        return Posted<std::invoke_result_t<Work>>(*this, std::move(work), std::move(giveUp));
    }

    /// Runs the work without anybody waiting for it. It must not throw. On one thread, like `post`.
    void postDetached(std::function<void()> work);

private:
    QString m_name;
    std::shared_ptr<LaneQueue> m_queue; // shared with the thread
    std::stop_source m_stop;
    bool m_isStarted = false;
};

/// Work that waits to be awaited. `Awaiter` is a mere pointer to it, which the compiler may copy.
template <typename Result>
class ExpendableLane::Posted {
public:
    Posted(ExpendableLane& lane, std::function<Result()> work, std::stop_token giveUp)
        : m_state(std::make_shared<State>(lane, std::move(work), std::move(giveUp)))
    {
    }

    [[nodiscard]] auto operator co_await() const& noexcept { return Awaiter{m_state.get()}; }
    void operator co_await() const&& = delete;

private:
    struct Nothing {};
    /// Lives in the caller's frame, and where it is given up, with its work. What is settled is settled on
    /// the caller's thread.
    struct State : std::enable_shared_from_this<State> {
        State(ExpendableLane& workLane, std::function<Result()> toDo, std::stop_token giveUp)
            : lane(workLane),
              work(std::move(toDo)),
              stop(std::move(giveUp))
        {
        }

        void begin(std::coroutine_handle<> caller)
        {
            awaiting = caller;
            lane.postDetached([self = this->shared_from_this()] {
                self->run();
                self->goHome(false);
            });
            onGiveUp.emplace(stop, [weak = this->weak_from_this()] {
                if (const auto self = weak.lock())
                    self->goHome(true);
            });
        }
        /// Any thread. Once settled there is no home any more: a thread that comes back while the process
        /// ends must touch nothing of the event loop's.
        void goHome(bool abandoned)
        {
            const std::scoped_lock lock(homeMutex);
            if (!home)
                return;
            home->call([weak = this->weak_from_this(), abandoned] {
                if (const auto self = weak.lock())
                    self->settle(abandoned);
            });
        }
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
        void settle(bool abandoned)
        {
            if (std::exchange(isSettled, true))
                return;
            isAbandoned = abandoned;
            onGiveUp.reset();
            {
                const std::scoped_lock lock(homeMutex);
                home.reset();
            }
            awaiting.resume();
        }

        ExpendableLane& lane; // until begun
        std::function<Result()> work;
        std::stop_token stop;
        std::optional<std::conditional_t<std::is_void_v<Result>, Nothing, Result>> result;
        std::exception_ptr error;
        std::coroutine_handle<> awaiting;
        std::optional<std::stop_callback<std::function<void()>>> onGiveUp;
        bool isSettled = false;
        bool isAbandoned = false;
        std::mutex homeMutex;
        std::unique_ptr<ThreadResumption> home = std::make_unique<ThreadResumption>();
    };
    struct Awaiter {
        State* state;

        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> awaiting) const { state->begin(awaiting); }
        Result await_resume() const
        {
            if (state->isAbandoned) // the thread may be at work on the result even now
                throw Abandoned();
            if (state->error)
                std::rethrow_exception(state->error);
            if constexpr (!std::is_void_v<Result>)
                return std::move(*state->result);
        }
    };

    std::shared_ptr<State> m_state;
};

} // namespace tessary
