#include "tests/component/workers/RecognizerFixture.h"
#include "tests/component/workers/WorkerProbe.h"
#include "workers/MessageFormat.h"

#include <QFile>

#include <csignal>

namespace tessary {
namespace {

using namespace testing;
using namespace std::chrono_literals;
using Case = TextRecognitionError::Case;

/// The worker's life: started on demand, gone after its rest, replaced after a failure.
class RecognizerWorkerLifeTest : public RecognizerFixture {
protected:
    /// Starts the worker by a request that is little work. @returns its process id.
    pid_t startWorker()
    {
        EXPECT_EQ(caseOf(blank(40, 30)), std::nullopt);
        return recognizer().workerProcessId().value_or(-1);
    }
    [[nodiscard]] static bool isRunning(pid_t process) { return ::kill(process, 0) == 0; }
    [[nodiscard]] static QByteArray fileOf(pid_t process, const char* name)
    {
        QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(RecognizerWorkerLifeTest, StartsWithTheFirstRequestAndServesTheNextOnes)
{
    EXPECT_EQ(recognizer().workerProcessId(), std::nullopt);
    const pid_t first = startWorker();
    ASSERT_GT(first, 0);
    EXPECT_EQ(startWorker(), first);
}

TEST_F(RecognizerWorkerLifeTest, RunsOnOneThreadUnderItsLimits)
{
    const pid_t worker = startWorker();
    EXPECT_TRUE(fileOf(worker, "environ").split('\0').contains("OMP_THREAD_LIMIT=1"));
    EXPECT_TRUE(fileOf(worker, "status").contains("Threads:\t1\n") || TESSARY_SANITIZED);
    const QByteArray limits = fileOf(worker, "limits").simplified();
    EXPECT_TRUE(limits.contains("Max core file size 0 0 bytes"));
    EXPECT_TRUE(limits.contains("Max address space 460000000 460000000 bytes") || TESSARY_SANITIZED);
}

TEST_F(RecognizerWorkerLifeTest, LeavesAfterItsRestAndComesBack)
{
    auto shortRest = options();
    shortRest.rest = 1s;
    useRecognizer(shortRest);
    const pid_t first = startWorker();
    EXPECT_TRUE(eventually([&] { return !isRunning(first); }));
    EXPECT_NE(startWorker(), first);
}

TEST_F(RecognizerWorkerLifeTest, FailsTheRequestDuringWhichItDiesAndStartsAfresh)
{
    const pid_t first = startWorker();
    ASSERT_EQ(::kill(first, SIGSTOP), 0);
    std::optional<Case> failure;
    QObject context;
    QCoro::connect(
        [](TextRecognizer& worker, TextRecognitionRequest how, QImage picture) -> QCoro::Task<int> {
            try {
                auto work = worker.perform(how, picture);
                co_await work;
            } catch (const TextRecognitionError& error) {
                co_return int(error.which());
            }
            co_return -1;
        }(recognizer(), english(), blank(40, 30)),
        &context, [&](int which) { failure = Case(which); });
    ASSERT_TRUE(eventually([&] { return hasRequestWaiting(first); }));
    ASSERT_EQ(::kill(first, SIGKILL), 0);
    ASSERT_TRUE(eventually([&] { return failure.has_value(); }));
    EXPECT_EQ(failure, Case::WorkerFailed);
    EXPECT_NE(startWorker(), first);
}

TEST_F(RecognizerWorkerLifeTest, GivesUpOnAWorkerThatDoesNotAnswerInTime)
{
    auto hasty = options();
    hasty.deadline = 2s; // within which a busy machine starts a worker
    useRecognizer(hasty);
    EXPECT_EQ(failureOf(blank(40, 30), {.languages = {QStringLiteral("fr-FR")}})->which(),
              Case::WorkerFailed);
    const pid_t first = recognizer().workerProcessId().value_or(-1);
    ASSERT_GT(first, 0);
    ASSERT_EQ(::kill(first, SIGSTOP), 0);
    EXPECT_EQ(caseOf(blank(40, 30)), Case::WorkerTimedOut);
    EXPECT_FALSE(isRunning(first));
}

TEST_F(RecognizerWorkerLifeTest, ReportsAProgramThatCannotBeStartedOrTalksNonsense)
{
    for (const QString& program : {folder().file(QStringLiteral("missing")), QStringLiteral("/bin/true"),
                                   QStringLiteral("/bin/false"), QStringLiteral("/bin/cat")}) {
        useRecognizer({.program = program});
        EXPECT_EQ(caseOf(blank(40, 30)), Case::WorkerFailed) << qPrintable(program);
    }
}

TEST_F(RecognizerWorkerLifeTest, ReportsAWorkerThatRunsOutOfMemory)
{
    const QString program = folder().file(QStringLiteral("starved"));
    QFile script(program);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(QByteArrayLiteral("#!/bin/sh\nexit ") + QByteArray::number(kWorkerOutOfMemory) + '\n');
    ASSERT_TRUE(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    script.close();
    useRecognizer({.program = program});
    EXPECT_EQ(caseOf(blank(40, 30)), Case::PictureTooLarge);
}

TEST_F(RecognizerWorkerLifeTest, NamesThePackagesOfModelsThatAreMissing)
{
    auto empty = options();
    empty.modelsFolder = folder().path();
    useRecognizer(empty);
    const std::optional<TextRecognitionError> failure = failureOf(blank(40, 30), request());
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->which(), Case::ModelsMissing);
    EXPECT_EQ(failure->detail(),
              QStringLiteral("tesseract-ocr-chi-sim tesseract-ocr-chi-tra tesseract-ocr-eng "
                             "tesseract-ocr-jpn"));
    EXPECT_TRUE(failure->localizedDescription().contains(QStringLiteral("tesseract-ocr-chi-sim")));
}

TEST_F(RecognizerWorkerLifeTest, DiesWithItsClientEvenWhenStopped)
{
    const pid_t worker = startWorker();
    ASSERT_EQ(::kill(worker, SIGSTOP), 0);
    useRecognizer(options());
    EXPECT_FALSE(isRunning(worker));
}

} // namespace
} // namespace tessary
