#include "bench/recognition/RecognitionRun.h"
#include "platform/workers/RecognizerWorker.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>
#include <exception>

/// recognition_bench --folder SET [...]: reads a set of pictures with the real worker program and prints the
/// error rates, the times and the most memory that the worker had.
namespace tessary::bench {
namespace {

RunOptions optionsFrom(const QStringList& arguments)
{
    const auto option = [](const char* name) {
        return QCommandLineOption(QString::fromLatin1(name), {}, QStringLiteral("value"));
    };
    QCommandLineParser parser;
    for (const char* name : {"folder", "half", "group", "level", "readings"})
        parser.addOption(option(name));
    parser.process(arguments);
    return {.folder = parser.value(QStringLiteral("folder")),
            .half = parser.value(QStringLiteral("half")),
            .group = parser.value(QStringLiteral("group")),
            .level = parser.value(QStringLiteral("level")),
            .readings = parser.value(QStringLiteral("readings")).toInt()};
}

/// The most memory that a process has held, as the system tells it.
QByteArray mostMemory(pid_t process)
{
    constexpr const char* kLine = "VmHWM:";
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith(kLine))
                return line.mid(qstrlen(kLine)).simplified();
    return QByteArrayLiteral("unknown");
}

QCoro::Task<int> run(RecognizerWorker* recognizer, RunOptions options)
{
    try {
        auto work = runRecognition(recognizer, options);
        const RecognitionTable table = co_await work;
        std::printf("%s\nmost memory of the worker: %s\n", qUtf8Printable(table.text()),
                    mostMemory(recognizer->workerProcessId().value_or(0)).constData());
        co_return 0;
    } catch (const Error& error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.localizedDescription()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    co_return 1;
}

} // namespace
} // namespace tessary::bench

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    tessary::RecognizerWorker recognizer({.program = QStringLiteral(TESSARY_RECOGNIZER_PROGRAM)});
    QObject context;
    QCoro::connect(
        tessary::bench::run(&recognizer, tessary::bench::optionsFrom(QGuiApplication::arguments())), &context,
        [](int code) { QGuiApplication::exit(code); });
    return QGuiApplication::exec();
}
