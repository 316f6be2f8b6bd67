#include "capture/ScreenshotDirectoryMonitor.h"

#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeDirectoryWatcher.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThreadsEnd.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using Report = ScreenshotDirectoryMonitor::Report;

class ScreenshotDirectoryMonitorTest : public ::testing::Test {
protected:
    ~ScreenshotDirectoryMonitorTest() override
    {
        monitor.stop();
        testing::letThreadsEnd(); // while there is still what they report to
    }
    void add(const QString& name)
    {
        QFile file(folder.file(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    void start() { await(startIn(folder.path())); }
    QCoro::Task<> startIn(const QString& path)
    {
        return monitor.start(path, [this](const QByteArray& file, Report report) {
            reported.append(QFileInfo(QString::fromUtf8(file)).fileName());
            reports.append(report);
        });
    }
    bool hasReported(const QStringList& names)
    {
        const bool came = eventually([&] { return reported == names; });
        EXPECT_TRUE(came) << qPrintable(reported.join(u'|'));
        return came;
    }
    static QString screenshot(int number) { return QStringLiteral("Screenshot %1.png").arg(number); }

    testing::TemporaryFolder folder;
    testing::FakeDirectoryWatcher watcher;
    testing::FakeClock clock;
    ScreenshotDirectoryMonitor monitor{watcher, clock};
    QStringList reported;
    QList<Report> reports;
};

TEST_F(ScreenshotDirectoryMonitorTest, RecognisesScreenshotsByTheirNames)
{
    for (const char* name : {"Screenshot 2026-03-05 at 09.07.03.png", "截屏2026-03-05 09.07.03.png",
                             "Capture d’écran 2026-03-05.png", "SCREEN SHOT.png", "capture d'ecran 1.png",
                             "螢幕截圖.png", "Bildschirmfoto 1.png"})
        EXPECT_TRUE(ScreenshotDirectoryMonitor::looksLikeScreenshot(QString::fromUtf8(name))) << name;
    for (const char* name : {"IMG_0001.png", "my screenshot.png", ".screenshot.png"})
        EXPECT_FALSE(ScreenshotDirectoryMonitor::looksLikeScreenshot(QString::fromUtf8(name))) << name;
}

TEST_F(ScreenshotDirectoryMonitorTest, ReportsWhatIsThereAtTheStartOnce)
{
    add(QStringLiteral("Screenshot 1.png"));
    add(QStringLiteral("Screenshot.gif"));
    add(QStringLiteral("IMG_0001.png"));
    start();
    ASSERT_TRUE(eventually([&] { return !reported.isEmpty(); }));
    add(QStringLiteral("Screenshot 2.JPEG"));
    watcher.announceChange(folder.path());
    ASSERT_TRUE(eventually([&] { return reported.size() == 2; }));
    EXPECT_EQ(reported,
              (QStringList{QStringLiteral("Screenshot 1.png"), QStringLiteral("Screenshot 2.JPEG")}));
    EXPECT_EQ(reports, (QList{Report::InitialScan, Report::Change}));
}

TEST_F(ScreenshotDirectoryMonitorTest, ReportsAFileRenamedToAScreenshotsName)
{
    add(QStringLiteral("part.png"));
    start();
    ASSERT_TRUE(
        QFile::rename(folder.file(QStringLiteral("part.png")), folder.file(QStringLiteral("截屏 1.png"))));
    watcher.announceChange(folder.path());
    EXPECT_TRUE(eventually([&] { return reported == QStringList{QStringLiteral("截屏 1.png")}; }));
}

TEST_F(ScreenshotDirectoryMonitorTest, AFolderThatCannotBeWatchedIsAnError)
{
    watcher.failWith(folder.path(), FileError::Case::ReadNoSuchFile);
    EXPECT_THROW(start(), FileError);
    EXPECT_FALSE(monitor.isWatching());
}

TEST_F(ScreenshotDirectoryMonitorTest, ScansOfAnEarlierWatchAreVoid)
{
    add(screenshot(1));
    start();
    monitor.stop();
    const testing::TemporaryFolder other;
    await(startIn(other.path()));
    QFile file(other.file(screenshot(2)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    watcher.announceChange(other.path());
    hasReported({screenshot(2)});
}

TEST_F(ScreenshotDirectoryMonitorTest, TheLaterOfTwoStartsWinsEvenWhileTheEarlierHangs)
{
    const testing::TemporaryFolder hung;
    watcher.hang(hung.path());
    add(screenshot(1));
    auto earlier = startIn(hung.path());
    auto later = startIn(folder.path());
    await(std::move(earlier)); // ends without a word
    await(std::move(later));
    EXPECT_EQ(watcher.watched(), QStringList{folder.path()});
    hasReported({screenshot(1)});
}

TEST_F(ScreenshotDirectoryMonitorTest, StoppingEndsAnOpeningThatHangs)
{
    watcher.hang(folder.path());
    auto opening = startIn(folder.path());
    monitor.stop();
    await(std::move(opening));
    EXPECT_FALSE(monitor.isWatching());
    EXPECT_TRUE(watcher.watched().isEmpty());
}

TEST_F(ScreenshotDirectoryMonitorTest, MayGoWhileItOpensAndWhileItScans)
{
    watcher.hang(folder.path());
    auto opening = std::make_unique<ScreenshotDirectoryMonitor>(watcher, clock);
    auto start = opening->start(folder.path(), [](const QByteArray&, Report) {});
    opening.reset();
    await(std::move(start));
    const testing::TemporaryFolder other;
    auto scanning = std::make_unique<ScreenshotDirectoryMonitor>(watcher, clock);
    await(scanning->start(other.path(), [](const QByteArray&, Report) { ADD_FAILURE(); }));
    scanning.reset();
    EXPECT_FALSE(eventually([] { return false; }, 50ms));
}

TEST_F(ScreenshotDirectoryMonitorTest, AFolderThatIsMadeAgainIsWatchedAgainWithoutRepeats)
{
    const QString inner = folder.file(QStringLiteral("inner"));
    ASSERT_TRUE(QDir().mkpath(inner));
    add(QStringLiteral("inner/Screenshot 1.png"));
    await(startIn(inner));
    ASSERT_TRUE(hasReported({screenshot(1)}));
    const QString away = folder.file(QStringLiteral("away"));
    ASSERT_TRUE(QDir().rename(inner, away));
    watcher.failWith(inner, FileError::Case::ReadNoSuchFile);
    watcher.announceChange(inner, DirectoryChange::FolderGone);
    ASSERT_TRUE(eventually([&] { return !monitor.isWatching() && clock.timers() == 1; }));
    clock.advance(1s);
    ASSERT_TRUE(eventually([&] { return watcher.openings() == 3 && clock.timers() == 1; }));
    watcher.failWith(inner, std::nullopt);
    ASSERT_TRUE(QDir().rename(away, inner));
    add(QStringLiteral("inner/Screenshot 2.png"));
    clock.advance(2s);
    ASSERT_TRUE(eventually([&] { return monitor.isWatching(); }));
    hasReported({screenshot(1), screenshot(2)});
    EXPECT_EQ(reports, (QList{Report::InitialScan, Report::InitialScan}));
}

TEST_F(ScreenshotDirectoryMonitorTest, LooksForALostFolderMoreAndMoreSeldom)
{
    start();
    watcher.failWith(folder.path(), FileError::Case::ReadNoSuchFile);
    watcher.announceChange(folder.path(), DirectoryChange::FolderGone);
    const int before = watcher.openings();
    for (int second = 0; second < 120; ++second) {
        ASSERT_TRUE(eventually([&] { return !monitor.isWatching() && clock.timers() == 1; }));
        clock.advance(1s);
    }
    EXPECT_LE(watcher.openings() - before, 13);
    EXPECT_GE(watcher.openings() - before, 8);
}

TEST_F(ScreenshotDirectoryMonitorTest, AnotherFolderInItsPlaceIsNoticedWithoutAnEvent)
{
    const QString inner = folder.file(QStringLiteral("inner"));
    ASSERT_TRUE(QDir().mkpath(inner));
    await(startIn(inner));
    ASSERT_TRUE(eventually([&] { return clock.timers() == 1; }));
    ASSERT_TRUE(QDir().rename(inner, folder.file(QStringLiteral("old"))));
    ASSERT_TRUE(QDir().mkpath(inner));
    add(QStringLiteral("inner/Screenshot 1.png"));
    // The look that comes every minute may not be due for the first time yet.
    EXPECT_TRUE(eventually([&] {
        clock.advance(60s);
        return reported == QStringList{screenshot(1)};
    }));
    EXPECT_EQ(watcher.openings(), 2);
    EXPECT_TRUE(eventually([&] { return monitor.isWatching(); }));
}

TEST_F(ScreenshotDirectoryMonitorTest, FiveThousandAtTheStartAreReportedOnceEachAFewAtATime)
{
    constexpr int kFiles = 5000;
    for (int i = 0; i < kFiles; ++i)
        add(screenshot(i));
    int turns = 0;
    QTimer everyTurn;
    QObject::connect(&everyTurn, &QTimer::timeout, [&] {
        if (!reported.isEmpty() && reported.size() < kFiles)
            ++turns;
    });
    everyTurn.start(0);
    start();
    ASSERT_TRUE(eventually([&] { return reported.size() == kFiles; }));
    watcher.announceChange(folder.path());
    EXPECT_FALSE(eventually([&] { return reported.size() > kFiles; }, 300ms));
    EXPECT_EQ(QSet<QString>(reported.begin(), reported.end()).size(), kFiles);
    EXPECT_EQ(reports.count(Report::InitialScan), kFiles);
    EXPECT_GE(turns, 10);
}

TEST_F(ScreenshotDirectoryMonitorTest, TheHandlerMayStopTheWatch)
{
    add(screenshot(1));
    add(screenshot(2));
    await(monitor.start(folder.path(), [this](const QByteArray& path, Report) {
        reported.append(QString::fromUtf8(path));
        monitor.stop();
    }));
    ASSERT_TRUE(eventually([&] { return !reported.isEmpty(); }));
    EXPECT_FALSE(eventually([&] { return reported.size() > 1; }, 100ms));
}

} // namespace
} // namespace tessary
