#include "capture/ScreenshotDirectoryMonitor.h"

#include "platform/testing/FakeDirectoryWatcher.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

using testing::eventually;
using Report = ScreenshotDirectoryMonitor::Report;

class ScreenshotDirectoryMonitorTest : public ::testing::Test {
protected:
    void add(const QString& name)
    {
        QFile file(folder.file(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    void start()
    {
        monitor.start(folder.path(), [this](const QString& path, Report report) {
            reported.append(QFileInfo(path).fileName());
            reports.append(report);
        });
    }

    testing::TemporaryFolder folder;
    testing::FakeDirectoryWatcher watcher;
    ScreenshotDirectoryMonitor monitor{watcher};
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
    add(QStringLiteral("Screenshot 1.png"));
    start();
    monitor.stop();
    const testing::TemporaryFolder other;
    monitor.start(other.path(), [this](const QString& path, Report) { reported.append(path); });
    QFile file(other.file(QStringLiteral("screenshot.png")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    watcher.announceChange(other.path());
    ASSERT_TRUE(eventually([&] { return !reported.isEmpty(); }));
    EXPECT_EQ(reported, QStringList{file.fileName()});
}

} // namespace
} // namespace tessary
