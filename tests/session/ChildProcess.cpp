#include "tests/session/ChildProcess.h"

#include "tests/support/Await.h"

#include <csignal>
#include <sys/types.h>

namespace tessary::testing {

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments,
                           const QProcessEnvironment& environment)
    : m_process(std::make_unique<QProcess>())
{
    m_process->setProcessEnvironment(environment);
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->start(program, arguments, QIODevice::ReadOnly);
    if (!m_process->waitForStarted())
        ADD_FAILURE() << qPrintable(program) << " did not start";
}

ChildProcess::~ChildProcess()
{
    if (isRunning())
        kill(SIGKILL);
}

bool ChildProcess::printed(const QString& text)
{
    const bool came = eventually([&] { return output().contains(text) || !isRunning(); });
    return came && output().contains(text);
}

QString ChildProcess::output()
{
    m_output += QString::fromUtf8(m_process->readAll());
    return m_output;
}

std::optional<int> ChildProcess::exitCode()
{
    if (!eventually([&] { return !isRunning(); }) || m_process->exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return m_process->exitCode();
}

bool ChildProcess::isRunning() const
{
    return m_process->state() != QProcess::NotRunning;
}

qint64 ChildProcess::processId() const
{
    return m_process->processId();
}

void ChildProcess::kill(int signal)
{
    if (!isRunning())
        return;
    ::kill(static_cast<pid_t>(m_process->processId()), signal);
    if (signal == SIGKILL || signal == SIGTERM || signal == SIGINT) {
        EXPECT_TRUE(eventually([&] { return !isRunning(); })) << "did not end after signal " << signal;
    }
}

} // namespace tessary::testing
