#pragma once

#include "base/Error.h"
#include "platform/workers/ChildProcess.h"

#include <QCborMap>

#include <chrono>
#include <mutex>

namespace tessary {

/// Why a worker gave no answer to one request.
class WorkerError : public Error {
public:
    enum class Case {
        Failed,   ///< It could not be started, crashed, or answered nonsense.
        TimedOut, ///< The deadline passed; it was killed.
        TooLarge, ///< The request is more than a message, or the worker's memory, may hold.
    };
    explicit WorkerError(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& detail() const noexcept { return m_detail; } ///< For the log.
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_detail;
};

/// The program of that name beside our own executable, else in ../libexec/tessary from there.
[[nodiscard]] QString workerProgramPath(const QString& name);

/// A program that answers one request at a time, started when there is one. It may leave when it has
/// rested; a failed request ends it, and the next one starts it afresh. At rest nothing wakes up.
class WorkerProcess {
public:
    explicit WorkerProcess(WorkerCommand command);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Blocks until the answer or the deadline (starting included): for one lane only, since the worker
    /// dies with the thread that started it. @throws WorkerError.
    [[nodiscard]] QCborMap request(const QCborMap& message, std::chrono::milliseconds deadline);
    /// Ends a request under way and fails all later ones at once. Any thread.
    void shutDown();
    /// The running worker's process id; nothing when none is running. Any thread.
    [[nodiscard]] std::optional<pid_t> processId() const;

private:
    /// Sends the request once. @returns nothing when the worker left of its own accord before it answered:
    /// its rest ended just when the request came.
    std::optional<QCborMap> attempt(const QCborMap& message, std::chrono::steady_clock::time_point deadline);
    ChildProcess& runningChild();
    int endChild();

    const WorkerCommand m_command;
    mutable std::mutex m_mutex; // guards the two below against other threads
    std::unique_ptr<ChildProcess> m_child;
    bool m_shutDown = false;
};

} // namespace tessary
