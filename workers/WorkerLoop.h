#pragma once

#include <QCborMap>

#include <chrono>
#include <functional>

namespace tessary {

/// What a worker program may use. To be set first thing, before any library wakes up.
struct WorkerLimits {
    qint64 addressSpaceBytes = 0; ///< RLIMIT_AS; 0 leaves it alone (sanitizers need the room).
};

/// Limits this process: address space, no core dumps, no files written, and it dies with its parent.
void applyWorkerLimits(const WorkerLimits& limits);

/// The value of `--rest-seconds N` (0 to 86400) among the arguments, else the default.
[[nodiscard]] std::chrono::seconds restFromArguments(int argc, char** argv, std::chrono::seconds otherwise);

/// Answers the requests on standard input, one at a time, on standard output (which is taken from the rest
/// of the program), until the input ends or nothing came for `rest`. Whoever answers may empty the request,
/// to hold large bytes only once.
/// @returns the exit code: 0 then, 2 for a malformed request, kWorkerOutOfMemory for one too large to hold.
[[nodiscard]] int serveRequests(std::chrono::milliseconds rest,
                                const std::function<QCborMap(QCborMap&)>& answer);

} // namespace tessary
