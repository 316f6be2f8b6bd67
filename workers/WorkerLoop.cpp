#include "workers/WorkerLoop.h"

#include "workers/MessageFormat.h"

#include <charconv>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <malloc.h>
#include <new>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tessary {
namespace {

void setLimit(__rlimit_resource resource, rlim_t value)
{
    rlimit limit{};
    if (::getrlimit(resource, &limit) != 0)
        return;
    limit.rlim_max = std::min(limit.rlim_max, value);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(resource, &limit);
}

/// A library that prints must not break into the messages.
int takeStandardOutput()
{
    const int output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

} // namespace

void applyWorkerLimits(const WorkerLimits& limits)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    setLimit(RLIMIT_CORE, 0);
    // A library that tries to write a file is to get an error, not a signal.
    std::signal(SIGXFSZ, SIG_IGN);
    setLimit(RLIMIT_FSIZE, 0);
    if (limits.addressSpaceBytes > 0)
        setLimit(RLIMIT_AS, static_cast<rlim_t>(limits.addressSpaceBytes));
    // Every further arena would reserve 64 MiB of the address space.
    ::mallopt(M_ARENA_MAX, 1);
}

std::chrono::seconds restFromArguments(int argc, char** argv, std::chrono::seconds otherwise)
{
    constexpr int kLongestRest = 86400;
    for (int i = 1; i + 1 < argc; ++i) {
        int seconds = -1;
        const char* const text = argv[i + 1];
        const char* const end = text + std::strlen(text);
        if (std::strcmp(argv[i], "--rest-seconds") == 0 && std::from_chars(text, end, seconds).ptr == end &&
            seconds >= 0 && seconds <= kLongestRest)
            return std::chrono::seconds(seconds);
    }
    return otherwise;
}

int serveRequests(std::chrono::milliseconds rest, const std::function<QCborMap(QCborMap&)>& answer)
{
    constexpr int kMalformedRequest = 2;
    const int output = takeStandardOutput();
    try {
        while (waitForMessage(STDIN_FILENO, messageDeadlineIn(rest))) {
            std::optional<QCborMap> request = readMessage(STDIN_FILENO, std::nullopt);
            if (!request)
                return 0;
            const QCborMap reply = answer(*request);
            request.reset();
            writeMessage(output, reply, std::nullopt);
        }
        return 0;
    } catch (const MessageError& error) {
        return error.which() == MessageError::Case::Closed ? 0 : kMalformedRequest;
    } catch (const std::bad_alloc&) {
        return kWorkerOutOfMemory;
    }
}

} // namespace tessary
