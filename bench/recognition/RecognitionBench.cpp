#include "bench/recognition/RecognitionRun.h"
#include "platform/workers/RecognizerWorker.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <qcoro/qcorotask.h>

#include <cstdio>
#include <optional>

/// recognition_bench: error rates and times of the real recogniser on the pictures of bench/recognition/run.
namespace tessary::bench {
namespace {

/// The most memory the process ever had, in MB; 0 when it has gone.
double peakMegabytes(std::optional<pid_t> process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process.value_or(0)));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

RunOptions optionsFrom(const QCoreApplication& application)
{
    QCommandLineParser parser;
    const auto add = [&parser](const char* name, const char* description) {
        parser.addOption(
            {QString::fromLatin1(name), QString::fromLatin1(description), QString::fromLatin1(name)});
    };
    add("folder", "where the pictures are");
    add("half", "tuning or reporting; both otherwise");
    add("group", "only that group");
    add("level", "accurate or fast; both otherwise");
    add("readings", "show what was read of so many pictures, the worst first");
    parser.process(application);
    return {parser.value(QStringLiteral("folder")), parser.value(QStringLiteral("half")),
            parser.value(QStringLiteral("group")), parser.value(QStringLiteral("level")),
            parser.value(QStringLiteral("readings")).toInt()};
}

/// Ends the program when it is done. QCoro's own waiting would never end after an error.
QCoro::Task<> run(RecognizerWorker* recognizer, RunOptions options)
{
    int status = 0;
    try {
        const RecognitionTable table = co_await runRecognition(recognizer, options);
        std::printf("%s", qUtf8Printable(table.text()));
        std::printf("peak memory of the worker: %.0f MB\n", peakMegabytes(recognizer->workerProcessId()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "recognition_bench: %s\n", error.what());
        status = 1;
    }
    QCoreApplication::exit(status);
}

} // namespace
} // namespace tessary::bench

int main(int argc, char** argv)
{
    using namespace tessary;
    QCoreApplication application(argc, argv);
    const bench::RunOptions options = bench::optionsFrom(application);
    RecognizerWorker::Options worker;
    worker.program = QStringLiteral(TESSARY_RECOGNIZER_PROGRAM);
    RecognizerWorker recognizer(worker);
    std::optional<QCoro::Task<>> running;
    // Once the loop runs, since leaving it before it does is without effect.
    QTimer::singleShot(0, &application, [&] { running = bench::run(&recognizer, options); });
    return QCoreApplication::exec();
}
