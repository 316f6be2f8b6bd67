#include <QCoreApplication>

#include <benchmark/benchmark.h>

/// Benchmarks run with an event loop at hand, which coroutines resume through.
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    QCoreApplication application(argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
