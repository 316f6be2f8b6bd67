#include "workers/WorkerLoop.h"
#include "workers/imaging/ImagingRequests.h"
#include "workers/imaging/VipsLibrary.h"

#include <QCoreApplication>

/// Reads pictures from outside for the program that started this one. See ImagingProtocol.
int main(int argc, char** argv)
{
    using namespace std::chrono_literals;
    constexpr int kNoLibrary = 3;
    tessary::applyWorkerLimits({.addressSpaceBytes = TESSARY_ADDRESS_SPACE_LIMIT});
    // No plugins: what they read is not among the formats wanted.
    QCoreApplication::setLibraryPaths({});
    if (!tessary::imaging::startVips(argv[0]))
        return kNoLibrary;
    return tessary::serveRequests(tessary::restFromArguments(argc, argv, 30s),
                                  tessary::imaging::answerImagingRequest);
}
