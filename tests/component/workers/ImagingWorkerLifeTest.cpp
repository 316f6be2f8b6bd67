#include "tests/component/workers/ImagingFixture.h"
#include "tests/component/workers/WorkerProbe.h"

#include <array>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>

namespace tessary {
namespace {

using namespace testing;
using namespace std::chrono_literals;
using Case = ImageError::Case;

/// The worker's life: started on demand, gone after its rest, replaced after a failure.
class ImagingWorkerLifeTest : public ImagingFixture {
protected:
    void SetUp() override { m_picture = write("picture.png", encoded(quadrants(60, 40), "png")); }

    [[nodiscard]] const QString& picture() const { return m_picture; }
    /// Starts the worker by a request. @returns its process id.
    pid_t startWorker()
    {
        EXPECT_EQ(await(codec().pixelSize(m_picture)), QSize(60, 40));
        return codec().workerProcessId().value_or(-1);
    }
    /// One letter from the system: R, S, T, Z …; none when there is no such process.
    [[nodiscard]] static std::optional<char> stateOf(pid_t process)
    {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        if (!status.open(QIODevice::ReadOnly))
            return std::nullopt;
        const QByteArray text = status.readAll();
        return text.at(text.lastIndexOf(')') + 2);
    }
    [[nodiscard]] static QByteArray limitOf(pid_t process, const char* name)
    {
        QFile limits(QStringLiteral("/proc/%1/limits").arg(process));
        if (!limits.open(QIODevice::ReadOnly))
            return {};
        for (const QByteArray& line : limits.readAll().split('\n'))
            if (line.startsWith(name))
                return line.mid(qstrlen(name)).simplified();
        return {};
    }

private:
    QString m_picture;
};

TEST_F(ImagingWorkerLifeTest, StartsWithTheFirstRequestAndServesTheNextOnes)
{
    EXPECT_EQ(codec().workerProcessId(), std::nullopt);
    const pid_t first = startWorker();
    ASSERT_GT(first, 0);
    EXPECT_EQ(startWorker(), first);
}

TEST_F(ImagingWorkerLifeTest, RunsUnderItsLimits)
{
    const pid_t worker = startWorker();
    EXPECT_EQ(limitOf(worker, "Max core file size"), "0 0 bytes");
    EXPECT_EQ(limitOf(worker, "Max file size"), "0 0 bytes");
    if (!TESSARY_SANITIZED) {
        EXPECT_EQ(limitOf(worker, "Max address space"), "1500000000 1500000000 bytes");
    }
}

TEST_F(ImagingWorkerLifeTest, HasNoDescriptorsButItsThree)
{
    const QString path = write("held", "open in this process");
    const int held = ::open(QFile::encodeName(path).constData(), O_RDONLY); // inheritable on purpose
    const pid_t worker = startWorker();
    const QFileInfoList open =
        QDir(QStringLiteral("/proc/%1/fd").arg(worker)).entryInfoList(QDir::Files | QDir::System);
    EXPECT_GE(open.size(), 3);
    for (const QFileInfo& entry : open)
        EXPECT_NE(entry.symLinkTarget(), path);
    ::close(held);
}

TEST_F(ImagingWorkerLifeTest, LeavesAfterItsRestWithoutAZombieAndComesBack)
{
    auto shortRest = options();
    shortRest.rest = 1s;
    useCodec(shortRest);
    const pid_t first = startWorker();
    EXPECT_TRUE(eventually([&] { return stateOf(first) == std::nullopt; }));
    EXPECT_EQ(codec().workerProcessId(), std::nullopt);
    EXPECT_NE(startWorker(), first);
}

TEST_F(ImagingWorkerLifeTest, FailsOnlyTheRequestDuringWhichItDies)
{
    const pid_t first = startWorker();
    ASSERT_EQ(::kill(first, SIGSTOP), 0);
    ASSERT_TRUE(eventually([&] { return stateOf(first) == 'T'; }));
    std::optional<Case> failure;
    bool ended = false;
    QObject context;
    QCoro::connect(
        [](ImageCodec& imageCodec, QString path) -> QCoro::Task<int> {
            try {
                (void)co_await imageCodec.decode(path, 100);
            } catch (const ImageError& error) {
                co_return int(error.which());
            }
            co_return -1;
        }(codec(), picture()),
        &context,
        [&](int which) {
            failure = Case(which);
            ended = true;
        });
    ASSERT_TRUE(eventually([&] { return hasRequestWaiting(first); }));
    EXPECT_FALSE(ended);
    ASSERT_EQ(::kill(first, SIGKILL), 0);
    ASSERT_TRUE(eventually([&] { return ended; }));
    EXPECT_EQ(failure, Case::WorkerFailed);
    EXPECT_EQ(stateOf(first), std::nullopt);
    EXPECT_NE(startWorker(), first);
}

TEST_F(ImagingWorkerLifeTest, ReplacesAWorkerThatWasKilledWhileItRested)
{
    const pid_t first = startWorker();
    ASSERT_EQ(::kill(first, SIGKILL), 0);
    EXPECT_TRUE(eventually([&] { return codec().workerProcessId() == std::nullopt; }));
    EXPECT_NE(startWorker(), first);
}

TEST_F(ImagingWorkerLifeTest, GivesUpOnAWorkerThatDoesNotAnswerInTime)
{
    auto hasty = options();
    hasty.deadline = 2s; // within which a busy machine starts a worker
    useCodec(hasty);
    const pid_t first = startWorker();
    ASSERT_EQ(::kill(first, SIGSTOP), 0);
    EXPECT_EQ(failureOf(codec().decode(picture(), 100)), Case::WorkerTimedOut);
    EXPECT_EQ(stateOf(first), std::nullopt);
    EXPECT_NE(startWorker(), first);
}

TEST_F(ImagingWorkerLifeTest, DiesWithItsClient)
{
    const pid_t worker = startWorker();
    useCodec(options());
    EXPECT_EQ(stateOf(worker), std::nullopt);
}

TEST_F(ImagingWorkerLifeTest, DiesWhenTheProcessThatStartedItIsKilled)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const pid_t parent = ::fork();
    if (parent == 0) {
        const ChildProcess child({QStringLiteral(TESSARY_IMAGING_PROGRAM), {}});
        const pid_t worker = child.id();
        (void)!::write(ends[1], &worker, sizeof worker);
        for (;;)
            ::pause();
    }
    pid_t worker = -1;
    ASSERT_EQ(::read(ends[0], &worker, sizeof worker), ssize_t(sizeof worker));
    // It waits for its first request; stopped, it could not notice the end of its input.
    ASSERT_TRUE(eventually(
        [&] { return limitOf(worker, "Max file size") == "0 0 bytes" && stateOf(worker) == 'S'; }));
    ASSERT_EQ(::kill(worker, SIGSTOP), 0);
    ASSERT_TRUE(eventually([&] { return stateOf(worker) == 'T'; }));
    ASSERT_EQ(::kill(parent, SIGKILL), 0);
    EXPECT_EQ(::waitpid(parent, nullptr, 0), parent);
    // Whoever adopted it may take a while to collect it.
    EXPECT_TRUE(eventually([&] { return stateOf(worker).value_or('Z') == 'Z'; }));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(ImagingWorkerLifeTest, DoesNotHoldUpTheEndWithAStoppedWorker)
{
    const pid_t worker = startWorker();
    ASSERT_EQ(::kill(worker, SIGSTOP), 0);
    useCodec(options());
    EXPECT_EQ(stateOf(worker), std::nullopt);
}

TEST_F(ImagingWorkerLifeTest, ReportsAProgramThatCannotBeStarted)
{
    for (const QString& program : {file("missing"), picture()}) {
        useCodec({.program = program});
        EXPECT_EQ(failureOf(codec().pixelSize(picture())), Case::WorkerFailed);
    }
}

TEST_F(ImagingWorkerLifeTest, ReportsAProgramThatLeavesOrTalksNonsense)
{
    for (const char* program : {"/bin/true", "/bin/false", "/bin/cat", "/bin/ls"}) {
        useCodec({.program = QString::fromLatin1(program)});
        EXPECT_EQ(failureOf(codec().pixelSize(picture())), Case::WorkerFailed) << program;
        EXPECT_EQ(codec().workerProcessId(), std::nullopt);
    }
}

TEST_F(ImagingWorkerLifeTest, AnswersRequestsThatWereAskedAtOnceInOrder)
{
    QList<int> sizes;
    QObject context;
    for (int size = 1; size <= 20; ++size)
        QCoro::connect(codec().decode(picture(), size), &context,
                       [&](const QImage& image) { sizes.append(image.width()); });
    ASSERT_TRUE(eventually([&] { return sizes.size() == 20; }));
    EXPECT_TRUE(std::is_sorted(sizes.begin(), sizes.end()));
}

} // namespace
} // namespace tessary
