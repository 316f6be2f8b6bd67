#include "app/AppSettings.h"
#include "app/FileIntake.h"
#include "base/FlowSet.h"
#include "bench/tools/PauseMeter.h"
#include "capture/FrontmostAppTracker.h"
#include "platform/linux/InotifyDirectoryWatcher.h"
#include "platform/linux/SystemClock.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "platform/workers/ImagingWorkerCodec.h"

#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <qcoro/qcorotask.h>

/// A screenshot folder as it is met at the start, with real files, the real worker and the real watch.
namespace tessary::bench {
namespace {

constexpr int kScreenshots = 5000;
constexpr int kEntries = 50'000;

void makeScreenshots(const QString& folder, int count)
{
    for (int i = 0; i < count; ++i) {
        QImage picture(640 + i % 100, 400 + i / 100, QImage::Format_RGB32);
        picture.fill(QColor::fromHsv(i % 360, 200, 200));
        picture.save(folder + QStringLiteral("/Screenshot %1.png").arg(i));
    }
}

struct Intake {
    Intake()
        : paths(AppPaths::create(folder.path())),
          store(QCoro::waitFor(SQLiteStore::open(paths.database))),
          importer(paths, *store, codec, icons, clock),
          tracker(QCoro::waitFor(
              FrontmostAppTracker::open(folder.filePath(QStringLiteral("log")), workspace, clock)))
    {
    }

    QTemporaryDir folder;
    AppPaths paths;
    std::unique_ptr<SQLiteStore> store;
    testing::FakeApplicationIcons icons;
    SystemClock clock;
    ImagingWorkerCodec codec{{.program = QStringLiteral(TESSARY_IMAGING_PROGRAM)}};
    ScreenshotImporter importer;
    testing::FakeWorkspace workspace;
    std::unique_ptr<FrontmostAppTracker> tracker;
    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults tool;
    testing::FakeStandardFolders folders{folder.path(), folder.path()};
    AppSettings settings{defaults, tool, folders};
    FlowSet flows{[](const std::exception&) {}};
    FileIntake files{settings, *tracker, importer, flows};
    InotifyDirectoryWatcher watcher;
    ScreenshotDirectoryMonitor monitor{watcher, clock};
};

/// From the start of the watch until every screenshot is an item.
void firstScan(benchmark::State& state)
{
    const QTemporaryDir shots;
    makeScreenshots(shots.path(), kScreenshots);
    for (auto _ : state) {
        Intake intake;
        const PauseMeter pauses;
        QEventLoop loop;
        int added = 0;
        QObject::connect(&intake.files, &FileIntake::libraryChanged, &loop, [&] {
            if (++added == kScreenshots)
                loop.quit();
        });
        QObject::connect(&intake.files, &FileIntake::failed, &loop, [&](const QString& message) {
            state.SkipWithError(qPrintable(message));
            loop.quit();
        });
        const auto handler = [&](const QByteArray& path, ScreenshotDirectoryMonitor::Report report) {
            intake.files.importDiscoveredFile(path, report);
        };
        const auto starting = intake.monitor.start(shots.path(), handler);
        loop.exec();
        state.counters["longest_pause_ms"] = pauses.longest();
        state.counters["longest_work_ms"] = pauses.longestWork();
        intake.monitor.stop();
        QCoro::waitFor(intake.flows.drained());
    }
}

/// One listing of a folder where hardly anything is a screenshot, when nothing is new.
void rescan(benchmark::State& state)
{
    const QTemporaryDir folder;
    for (int i = 0; i < kEntries; ++i)
        (void)QFile(folder.filePath(QStringLiteral("IMG_%1.png").arg(i))).open(QIODevice::WriteOnly);
    makeScreenshots(folder.path(), 3);
    ScreenshotFolder screenshots(QFile::encodeName(folder.path()));
    if (screenshots.scan().paths.size() != 3)
        state.SkipWithError("the screenshots were not found");
    for (auto _ : state)
        benchmark::DoNotOptimize(screenshots.scan());
}

BENCHMARK(firstScan)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1);
BENCHMARK(rescan)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace tessary::bench
