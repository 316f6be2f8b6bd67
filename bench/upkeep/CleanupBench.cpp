#include "app/AppSettings.h"
#include "app/LibraryFiles.h"
#include "app/StorageMaintenance.h"
#include "bench/tools/PauseMeter.h"
#include "bench/tools/SampleLibrary.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeImageCodec.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

/// What the upkeep of a library costs, and for how long it holds up the main thread.
namespace tessary::bench {
namespace {

constexpr int kRemoved = 10'000;
constexpr qint64 kPictureSize = 1'000'000; // as recorded; the files are small
constexpr qint64 kOtherItems = 20'000;     // mostly texts

/// A library of texts and of pictures with their three files, of which `kRemoved` are above the limit.
class Library {
public:
    Library()
    {
        SampleLibrary(paths).fill(kOtherItems);
        addPictures(1000 + kRemoved);
        store = QCoro::waitFor(SQLiteStore::open(paths.database));
        importer = std::make_unique<ScreenshotImporter>(paths, *store, codec, icons, clock);
        tracker = QCoro::waitFor(
            FrontmostAppTracker::open(paths.root + QStringLiteral("/FrontmostApps.json"), workspace, clock));
        storage.setPaths(paths);
        storage.setLibrary(*store, *importer, *tracker);
        settings.setAutomaticStorageCleanup(true);
        settings.setMaxStorageGB(1);
    }
    ~Library() { QCoro::waitFor(flows.drained()); }

    [[nodiscard]] qint64 pictures() { return QCoro::waitFor(store->counts()).images; }

private:
    QTemporaryDir m_folder;

public:
    AppPaths paths = AppPaths::create(m_folder.path());
    testing::FakeClock clock;
    testing::FakeImageCodec codec;
    testing::FakeApplicationIcons icons;
    testing::FakeWorkspace workspace;
    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{m_folder.path(), m_folder.path()};
    AppSettings settings{defaults, screenshotTool, folders};
    std::unique_ptr<SQLiteStore> store;
    std::unique_ptr<ScreenshotImporter> importer;
    std::unique_ptr<FrontmostAppTracker> tracker;
    LibraryFiles files;
    FlowSet flows{[](const std::exception&) {}};
    StorageMaintenance storage{settings, clock, files, flows};

private:
    void addPictures(int count)
    {
        CoreDataScreenshotStore records(paths.database);
        Projection projection(SQLiteStore::projectionPath(paths.database));
        SQLiteTransaction structured(records.connection());
        SQLiteTransaction rows(projection.connection());
        for (int i = 0; i < count; ++i) {
            const ScreenshotRecord record = picture(i);
            records.insert(record);
            projection.insertProjection(record);
            projection.updateSearchIndex(record);
        }
        rows.commit();
        structured.commit();
    }
    /// The texts among the other items come on top of what the pictures may take.
    ScreenshotRecord picture(int number)
    {
        ScreenshotRecord record;
        record.id = QUuid::createUuid();
        const QString id = identifierText(record.id);
        record.contentHash = id;
        record.filename = QStringLiteral("Screenshot %1.png").arg(number);
        record.fileType = QStringLiteral("png");
        record.libraryPath = paths.originals + u'/' + id + QStringLiteral(".png");
        record.thumbnailPath = paths.thumbnails + u'/' + id + QStringLiteral(".jpg");
        record.sourceAppIconPath = paths.appIcons + u'/' + id + QStringLiteral(".png");
        for (const QString& path : {record.libraryPath, *record.thumbnailPath, *record.sourceAppIconPath}) {
            QFile file(path);
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray(8000, 'x'));
        }
        record.fileSize = kPictureSize;
        record.capturedAt = Date{static_cast<double>(number)};
        record.importedAt = record.capturedAt;
        return record;
    }
};

/// Counts the time of one run of the work, and the longest pause in it.
template <typename Work>
void measure(benchmark::State& state, Work work)
{
    double pause = 0;
    double mostWork = 0;
    for (auto _ : state) {
        const PauseMeter meter;
        work();
        pause = meter.longest();
        mostWork = meter.longestWork();
    }
    state.counters["most_work_ms"] = mostWork;
    state.counters["longest_pause_ms"] = pause;
}

void cleanUp(benchmark::State& state)
{
    Library library;
    const qint64 before = library.pictures();
    measure(state, [&] { QCoro::waitFor(library.storage.enforceStorageLimit()); });
    state.counters["removed"] = static_cast<double>(before - library.pictures());
}

void clearAllData(benchmark::State& state)
{
    Library library;
    measure(state, [&] { QCoro::waitFor(library.storage.clearAllData()); });
    if (library.pictures() > 0)
        state.SkipWithError("pictures are left");
}

/// Of about 33,000 files.
void measureUsage(benchmark::State& state)
{
    Library library;
    measure(state, [&] { QCoro::waitFor(library.storage.measureUsage()); });
}

BENCHMARK(cleanUp)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(clearAllData)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(measureUsage)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace tessary::bench
