#include "capture/FrontmostAppTracker.h"

#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeWorkspace.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

RunningApplication program(const char* name)
{
    RunningApplication application;
    application.localizedName = QLatin1String(name);
    application.bundleIdentifier = QLatin1String(name);
    return application;
}

FrontmostAppSample sample(double time, const char* name)
{
    return {Date{time}, SourceApplicationSnapshot::of(program(name))};
}

class FrontmostAppTrackerTest : public ::testing::Test {
protected:
    QString logPath() const { return folder.file(QStringLiteral("FrontmostApps.json")); }
    std::unique_ptr<FrontmostAppTracker> open()
    {
        return await(FrontmostAppTracker::open(logPath(), workspace, clock));
    }
    void writeLog(const QByteArray& bytes)
    {
        QFile file(logPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QList<FrontmostAppSample> log() const
    {
        QFile file(logPath());
        return file.open(QIODevice::ReadOnly) ? decodeSamples(file.readAll()) : QList<FrontmostAppSample>();
    }
    void activate(const char* name)
    {
        workspace.activate(program(name));
        ASSERT_TRUE(eventually([&] { return workspace.frontmostApplication() == program(name); }));
    }

    testing::TemporaryFolder folder;
    testing::FakeWorkspace workspace;
    testing::FakeClock clock;
    const double now = clock.now().secondsSince1970;
};

TEST_F(FrontmostAppTrackerTest, RecordsWhatIsInFrontAtTheStartAndEachChange)
{
    workspace.setFrontmost(program("editor"));
    const auto tracker = open();
    activate("browser");
    activate("browser");
    EXPECT_EQ(tracker->samples(), (QList{sample(now, "editor"), sample(now, "browser")}));
    EXPECT_TRUE(eventually([&] { return log() == tracker->samples(); }));
}

TEST_F(FrontmostAppTrackerTest, TheHeartbeatAndWakingUpRecordALongStayAnew)
{
    workspace.setFrontmost(program("editor"));
    const auto tracker = open();
    clock.advance(300s);
    EXPECT_EQ(tracker->samples(), (QList{sample(now, "editor"), sample(now + 300, "editor")}));
    workspace.wake();
    EXPECT_TRUE(eventually([&] { return tracker->samples().size() == 3; }));
}

TEST_F(FrontmostAppTrackerTest, DropsASampleOlderThanFortyEightHours)
{
    writeLog(encodeSamples({sample(now - 172'801, "old"), sample(now - 172'800, "just")}));
    EXPECT_EQ(open()->samples(), QList{sample(now - 172'800, "just")});
}

TEST_F(FrontmostAppTrackerTest, KeepsTheTwoThousandNewestSamples)
{
    QList<FrontmostAppSample> samples;
    for (int i = 0; i < 2001; ++i)
        samples.append(sample(now - 2001 + i, i % 2 == 0 ? "a" : "b"));
    writeLog(encodeSamples(samples));
    EXPECT_EQ(open()->samples(), samples.mid(1));
}

TEST_F(FrontmostAppTrackerTest, ACorruptLogIsAnEmptyHistoryAndIsOverwritten)
{
    writeLog("{\"garbage\"");
    const auto tracker = open();
    EXPECT_TRUE(tracker->samples().isEmpty());
    activate("editor");
    EXPECT_TRUE(eventually([&] { return log() == tracker->samples() && log().size() == 1; }));
}

TEST_F(FrontmostAppTrackerTest, SurvivesARestart)
{
    {
        const auto tracker = open();
        activate("editor");
    }
    workspace.setFrontmost(std::nullopt);
    EXPECT_EQ(open()->samples(), QList{sample(now, "editor")});
}

TEST_F(FrontmostAppTrackerTest, FindsTheLatestOtherApplication)
{
    const auto tracker = open();
    activate("editor");
    activate("us");
    EXPECT_EQ(tracker->currentApplication()->bundleIdentifier, QStringLiteral("us"));
    EXPECT_EQ(tracker->latestApplication(QStringLiteral("us"))->bundleIdentifier, QStringLiteral("editor"));
    workspace.setFrontmost(std::nullopt);
    EXPECT_EQ(tracker->currentApplication(), std::nullopt);
}

TEST_F(FrontmostAppTrackerTest, TakesTheNewestSampleBeforeElseTheEarliestWithinTwoSecondsAfter)
{
    const QList<FrontmostAppSample> samples{sample(100, "a"), sample(110, "b"), sample(121.5, "c"),
                                            sample(122, "d")};
    const auto nameAt = [&](double time, double distance) {
        const auto found = FrontmostAppTracker::closestSample(Date{time}, samples, distance);
        return found ? *found->application.localizedName : QString();
    };
    EXPECT_EQ(nameAt(120, 60), QStringLiteral("b"));
    EXPECT_EQ(nameAt(110, 0), QStringLiteral("b"));
    EXPECT_EQ(nameAt(120, 5), QStringLiteral("c"));
    EXPECT_EQ(nameAt(119, 5), QString());
    EXPECT_EQ(nameAt(98.5, 1000), QStringLiteral("a"));
    EXPECT_EQ(nameAt(97.5, 1000), QString());
}

TEST_F(FrontmostAppTrackerTest, ALogFromTheFutureDoesNotStandInForThePresent)
{
    writeLog(encodeSamples({sample(now - 10, "browser"), sample(now + 86'400, "editor")}));
    workspace.setFrontmost(program("editor"));
    const auto tracker = open();
    EXPECT_EQ(tracker->samples(), (QList{sample(now - 10, "browser"), sample(now, "editor")}));
    EXPECT_EQ(tracker->latestApplication(QStringLiteral("editor"))->bundleIdentifier,
              QStringLiteral("browser"));
}

TEST_F(FrontmostAppTrackerTest, AClockThatIsSetBackLeavesNoSamplesAheadOfIt)
{
    const auto tracker = open();
    activate("editor");
    clock.setNow(Date{now - 3600});
    activate("browser");
    EXPECT_EQ(tracker->samples(), QList{sample(now - 3600, "browser")});
    clock.setNow(Date{now - 3601});
    activate("editor"); // a second is within what may be looked ahead
    EXPECT_EQ(tracker->samples(), (QList{sample(now - 3600, "browser"), sample(now - 3601, "editor")}));
}

TEST_F(FrontmostAppTrackerTest, WithTwoThousandSamplesTheNextOneDrivesOutTheOldest)
{
    QList<FrontmostAppSample> samples;
    for (int i = 0; i < 2000; ++i)
        samples.append(sample(now - 2000 + i, i % 2 == 0 ? "a" : "b"));
    writeLog(encodeSamples(samples));
    const auto tracker = open();
    activate("c");
    EXPECT_EQ(tracker->samples().size(), 2000);
    EXPECT_EQ(tracker->samples().constFirst(), samples[1]);
    EXPECT_EQ(tracker->samples().constLast(), sample(now, "c"));
}

TEST_F(FrontmostAppTrackerTest, AnOldSampleGoesWithTheNextRecord)
{
    const auto tracker = open();
    activate("editor");
    clock.advance(172'800s); // the heartbeat recorded as well
    EXPECT_EQ(tracker->samples().constFirst(), sample(now, "editor"));
    clock.advance(300s);
    EXPECT_EQ(tracker->samples().constFirst(), sample(now + 300, "editor"));
}

TEST_F(FrontmostAppTrackerTest, AnythingButAWholeLogIsAnEmptyHistory)
{
    const QByteArray whole = encodeSamples({sample(now - 2, "a"), sample(now - 1, "b")});
    for (qsizetype length = 0; length < whole.size(); ++length) {
        writeLog(whole.first(length));
        ASSERT_TRUE(open()->samples().isEmpty()) << length;
    }
    for (const char* log : {"{}", "null", "[1]", "[{\"timestamp\":\"1\",\"application\":{}}]",
                            "[{\"timestamp\":1e999,\"application\":{}}]", "\xff\xfe\0[]"}) {
        writeLog(log);
        EXPECT_TRUE(open()->samples().isEmpty()) << log;
    }
}

TEST_F(FrontmostAppTrackerTest, AHugeLogIsReadWithoutHoldingUpTheMainThread)
{
    QList<FrontmostAppSample> samples;
    for (int i = 0; i < 160'000; ++i)
        samples.append(sample(now - 172'000 + i, i % 2 == 0 ? "a long name of a program" : "another"));
    const QByteArray log = encodeSamples(samples);
    ASSERT_GT(log.size(), 14'000'000);
    writeLog(log);
    const auto tracker = open();
    if (log.size() <= 16 * 1024 * 1024)
        EXPECT_EQ(tracker->samples(), samples.last(2000));
    else
        EXPECT_TRUE(tracker->samples().isEmpty());
    writeLog(log + QByteArray(16 * 1024 * 1024, ' '));
    EXPECT_TRUE(open()->samples().isEmpty()) << "nobody keeps a log as large as this";
}

TEST_F(FrontmostAppTrackerTest, WithALogThatCannotBeWrittenItWorksFromMemory)
{
    ASSERT_TRUE(QDir().mkpath(logPath()));
    const auto tracker = open();
    activate("editor");
    EXPECT_EQ(tracker->samples().size(), 1);
}

} // namespace
} // namespace tessary
