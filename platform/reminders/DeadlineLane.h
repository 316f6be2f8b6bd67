#pragma once

#include "base/ExpendableLane.h"
#include "platform/ReminderStore.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <atomic>

namespace tessary {

/// Lets exactly one have its way: the work that is about to count, or the clock that gives it up. Any thread.
class Claim {
public:
    /// @returns whether the caller came first.
    [[nodiscard]] bool take() noexcept { return !m_taken.test_and_set(); }
    [[nodiscard]] bool isTaken() const noexcept { return m_taken.test(); }

private:
    std::atomic_flag m_taken;
};

/// Runs calls that may hang, in order, on a thread of its own that is given up once one of them takes too
/// long; the next call gets a new thread and a new `State`. The state is used and destroyed on its thread.
/// Main thread only.
template <typename State>
class DeadlineLane {
public:
    template <typename Result>
    using Work = std::function<Result(State&, Claim&)>;

    explicit DeadlineLane(QString name) : m_name(std::move(name)) {}

    /// The result of the work, or its very exception. Work that changes something takes the claim when it is
    /// done, and undoes it where that fails. Work that waited too long for its turn is not begun.
    /// @throws ReminderStoreError TimedOut.
    template <typename Result>
    [[nodiscard]] QCoro::Task<Result> run(QDeadlineTimer deadline, Work<Result> work)
    {
        const std::shared_ptr<Thread> thread = runningThread();
        const auto claim = std::make_shared<Claim>();
        const auto giveUp = std::make_shared<std::stop_source>();
        QTimer clock;
        clock.setSingleShot(true);
        clock.setTimerType(Qt::PreciseTimer); // others come up to 5 % too early
        QObject::connect(&clock, &QTimer::timeout, [claim, giveUp] {
            if (claim->take())
                giveUp->request_stop();
        });
        clock.start(static_cast<int>(deadline.remainingTime()));
        auto posted = thread->lane.post(
            [work = std::move(work), state = thread->state, claim] {
                if (claim->isTaken())
                    throw Abandoned();
                return work(*state, *claim);
            },
            giveUp->get_token());
        try {
            co_return co_await posted;
        } catch (const Abandoned&) {
            if (m_thread == thread)
                m_thread.reset();
            throw ReminderStoreError(ReminderStoreError::Case::TimedOut);
        }
    }

    /// Ends the thread, and the state with it. @returns false where something is under way there.
    bool rest()
    {
        if (m_thread.use_count() > 1)
            return false;
        m_thread.reset();
        return true;
    }
    [[nodiscard]] bool isResting() const { return m_thread == nullptr; }

private:
    struct Thread {
        explicit Thread(const QString& name) : lane(name) {}
        ~Thread()
        {
            lane.postDetached([last = std::move(state)] {});
        }
        Thread(const Thread&) = delete;
        Thread& operator=(const Thread&) = delete;

        std::shared_ptr<State> state = std::make_shared<State>();
        ExpendableLane lane;
    };

    std::shared_ptr<Thread> runningThread()
    {
        if (!m_thread)
            m_thread = std::make_shared<Thread>(m_name);
        return m_thread;
    }

    QString m_name;
    std::shared_ptr<Thread> m_thread; // absent at rest
};

} // namespace tessary
