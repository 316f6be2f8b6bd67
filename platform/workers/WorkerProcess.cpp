#include "platform/workers/WorkerProcess.h"

#include "workers/MessageFormat.h"

#include <QCoreApplication>

#include <sys/wait.h>
#include <system_error>

namespace tessary {

namespace {

/// @returns nothing when the worker ended without an answer.
std::optional<QCborMap> exchange(const ChildProcess& child, const QCborMap& message,
                                 std::chrono::steady_clock::time_point deadline)
{
    try {
        writeMessage(child.input(), message, deadline);
    } catch (const MessageError& error) {
        if (error.which() == MessageError::Case::Closed)
            return std::nullopt;
        throw;
    }
    return readMessage(child.output(), deadline);
}

} // namespace

QString WorkerError::localizedDescription() const
{
    switch (m_case) {
    case Case::TimedOut:
        return QCoreApplication::translate("WorkerError", "后台处理进程没有及时响应。");
    case Case::TooLarge:
        return QCoreApplication::translate("WorkerError", "内容过大，无法交给后台处理进程。");
    case Case::Failed:
        break;
    }
    return QCoreApplication::translate("WorkerError", "后台处理进程意外退出。");
}

QString workerProgramPath(const QString& name)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString beside = folder.filePath(name);
    if (QFileInfo(beside).isExecutable())
        return beside;
    return QDir::cleanPath(folder.filePath(QStringLiteral("../libexec/tessary/") + name));
}

WorkerProcess::WorkerProcess(WorkerCommand command) : m_command(std::move(command)) {}

WorkerProcess::~WorkerProcess() = default;

QCborMap WorkerProcess::request(const QCborMap& message, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    std::optional<QCborMap> reply = attempt(message, end);
    if (!reply)
        reply = attempt(message, end);
    if (!reply)
        throw WorkerError(WorkerError::Case::Failed, QStringLiteral("left without an answer"));
    return *std::move(reply);
}

void WorkerProcess::shutDown()
{
    const std::scoped_lock lock(m_mutex);
    m_shutDown = true;
    if (m_child)
        m_child->kill();
}

std::optional<pid_t> WorkerProcess::processId() const
{
    const std::scoped_lock lock(m_mutex);
    if (!m_child || m_child->hasEnded())
        return std::nullopt;
    return m_child->id();
}

std::optional<QCborMap> WorkerProcess::attempt(const QCborMap& message,
                                               std::chrono::steady_clock::time_point deadline)
{
    ChildProcess& child = runningChild();
    try {
        if (std::optional<QCborMap> reply = exchange(child, message, deadline))
            return reply;
    } catch (const MessageError& error) {
        if (error.which() == MessageError::Case::Unsendable)
            throw WorkerError(WorkerError::Case::TooLarge);
        child.kill();
        endChild();
        throw WorkerError(error.which() == MessageError::Case::TimedOut ? WorkerError::Case::TimedOut
                                                                        : WorkerError::Case::Failed);
    }
    const int status = endChild();
    if (WIFEXITED(status) && WEXITSTATUS(status) == kWorkerOutOfMemory)
        throw WorkerError(WorkerError::Case::TooLarge);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw WorkerError(WorkerError::Case::Failed, QStringLiteral("status %1").arg(status));
    return std::nullopt;
}

ChildProcess& WorkerProcess::runningChild()
{
    if (m_child && m_child->hasEnded())
        endChild();
    const std::scoped_lock lock(m_mutex);
    if (m_shutDown)
        throw WorkerError(WorkerError::Case::Failed, QStringLiteral("shut down"));
    if (!m_child) {
        try {
            m_child = std::make_unique<ChildProcess>(m_command);
        } catch (const std::system_error& error) {
            throw WorkerError(WorkerError::Case::Failed, QString::fromUtf8(error.what()));
        }
    }
    return *m_child;
}

int WorkerProcess::endChild()
{
    const int status = m_child->finish();
    const std::scoped_lock lock(m_mutex);
    m_child.reset();
    return status;
}

} // namespace tessary
