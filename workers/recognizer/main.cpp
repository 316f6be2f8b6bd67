#include "workers/WorkerLoop.h"
#include "workers/recognizer/RecognizerRequests.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

/// The value of `--models FOLDER`; empty without.
QByteArray modelsFolder(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], "--models") == 0)
            return {argv[i + 1]};
    return {};
}

} // namespace

/// Reads the text in pictures for the program that started this one. See RecognizerProtocol.
int main(int argc, char** argv)
{
    using namespace std::chrono_literals;
    // Read once, before main: several threads only get into each other's way on such small models.
    if (!std::getenv("OMP_THREAD_LIMIT") && ::setenv("OMP_THREAD_LIMIT", "1", 1) == 0)
        ::execv("/proc/self/exe", argv);
    tessary::applyWorkerLimits({.addressSpaceBytes = TESSARY_ADDRESS_SPACE_LIMIT});
    tessary::recognizer::EngineSet engines(modelsFolder(argc, argv));
    return tessary::serveRequests(tessary::restFromArguments(argc, argv, 60s), [&](QCborMap& request) {
        return tessary::recognizer::answerRecognizerRequest(engines, request);
    });
}
