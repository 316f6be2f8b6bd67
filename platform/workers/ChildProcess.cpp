#include "platform/workers/ChildProcess.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tessary {
namespace {

[[noreturn]] void throwSystemError(int code, const char* what)
{
    throw std::system_error(code, std::generic_category(), what);
}

struct Pipe {
    OwnedDescriptor readEnd;
    OwnedDescriptor writeEnd;
};

Pipe makePipe()
{
    constexpr int kPipeSize = 1024 * 1024;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throwSystemError(errno, "pipe2");
    // Fewer switches between the processes; a refusal only costs some speed.
    ::fcntl(ends[0], F_SETPIPE_SZ, kPipeSize);
    return {OwnedDescriptor(ends[0]), OwnedDescriptor(ends[1])};
}

void makeNonBlocking(const OwnedDescriptor& descriptor)
{
    ::fcntl(descriptor.get(), F_SETFL, ::fcntl(descriptor.get(), F_GETFL) | O_NONBLOCK);
}

/// A pidfd. The C library's own function cannot be linked from C++ before glibc 2.37.
int openHandle(pid_t process)
{
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

/// Ends with a null pointer. The command's own variables take the place of inherited ones of that name.
std::vector<char*> environmentOf(const WorkerCommand& command)
{
    std::vector<char*> variables;
    for (const QByteArray& own : command.environment)
        variables.push_back(const_cast<char*>(own.constData()));
    for (char** inherited = environ; *inherited; ++inherited) {
        const QByteArrayView variable(*inherited);
        const bool replaced =
            std::any_of(command.environment.begin(), command.environment.end(), [&](const QByteArray& own) {
                return variable.startsWith(own.left(own.indexOf('=') + 1));
            });
        if (!replaced)
            variables.push_back(*inherited);
    }
    variables.push_back(nullptr);
    return variables;
}

/// What posix_spawn() wants to be told: the three standard descriptors and nothing else, default signals.
class SpawnSettings {
public:
    SpawnSettings(int input, int output)
    {
        posix_spawn_file_actions_init(&m_files);
        posix_spawn_file_actions_adddup2(&m_files, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_files, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 1);
        posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* files() const { return &m_files; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

void OwnedDescriptor::reset()
{
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
}

ChildProcess::ChildProcess(const WorkerCommand& command)
{
    Pipe toChild = makePipe();
    Pipe fromChild = makePipe();
    start(command, toChild.readEnd.get(), fromChild.writeEnd.get());
    m_input = std::move(toChild.writeEnd);
    m_output = std::move(fromChild.readEnd);
    makeNonBlocking(m_input);
    makeNonBlocking(m_output);
    m_reaper = std::jthread([this] {
        pthread_setname_np(pthread_self(), "worker-reaper");
        int status = 0;
        while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
        }
        m_status.store(status);
    });
}

ChildProcess::~ChildProcess()
{
    kill();
}

void ChildProcess::start(const WorkerCommand& command, int childInput, int childOutput)
{
    const QByteArray program = QFile::encodeName(command.program);
    std::vector<char*> arguments{const_cast<char*>(program.constData())};
    for (const QByteArray& argument : command.arguments)
        arguments.push_back(const_cast<char*>(argument.constData()));
    arguments.push_back(nullptr);
    const std::vector<char*> variables = environmentOf(command);
    const SpawnSettings settings(childInput, childOutput);
    const int error = ::posix_spawn(&m_id, program.constData(), settings.files(), settings.attributes(),
                                    arguments.data(), variables.data());
    if (error != 0)
        throwSystemError(error, "posix_spawn");
    m_handle = OwnedDescriptor(openHandle(m_id));
    if (m_handle.get() < 0) {
        const int reason = errno;
        ::kill(m_id, SIGKILL);
        ::waitpid(m_id, nullptr, 0);
        throwSystemError(reason, "pidfd_open");
    }
}

void ChildProcess::kill() const
{
    ::syscall(SYS_pidfd_send_signal, m_handle.get(), SIGKILL, nullptr, 0);
}

int ChildProcess::finish()
{
    constexpr int kMomentMs = 1000;
    pollfd entry{m_handle.get(), POLLIN, 0};
    if (::poll(&entry, 1, kMomentMs) <= 0)
        kill();
    if (m_reaper.joinable())
        m_reaper.join();
    return m_status.load();
}

} // namespace tessary
