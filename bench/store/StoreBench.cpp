#include "bench/tools/KeptLibrary.h"
#include "bench/tools/SampleLibrary.h"
#include "bench/tools/WrittenBytes.h"
#include "store/Projection.h"
#include "store/SQLiteStore.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <qcoro/qcorotask.h>

/// What the library's changes cost, each with all its commits, in libraries of the given number of items.
/// They lie in the folder for temporary files, which TMPDIR moves to the disk in question. The one of a
/// million is only made with TESSARY_BENCH_MILLION set, since it takes some minutes and 16 GB.
namespace tessary::bench {
namespace {

constexpr int kInsertions = 2000; // in one run, so few that the library stays of its size

void countWritten(benchmark::State& state, const WrittenBytes& before)
{
    const WrittenBytes now = writtenBytes();
    state.counters["written_kB_each"] = (now.handedOver - before.handedOver) / kInsertions / 1024;
    state.counters["disk_kB_each"] = (now.toDisks - before.toDisks) / kInsertions / 1024;
}

/// A library that is filled once and then grows by what the benchmarks add.
class Library {
public:
    explicit Library(qint64 items) : m_paths(AppPaths::create(m_folder.path())), m_items(m_paths)
    {
        if (items > 0)
            m_items.fill(items);
        Projection projection(SQLiteStore::projectionPath(m_paths.database));
        while (projection.indexGrams(items)) {
        }
        store = QCoro::waitFor(SQLiteStore::open(m_paths.database));
    }

    [[nodiscard]] ScreenshotRecord next() { return m_items.next(); }

private:
    QTemporaryDir m_folder;
    AppPaths m_paths;
    SampleLibrary m_items;

public:
    std::unique_ptr<SQLiteStore> store; // last: closes before the folder goes
};

QCoro::Task<bool> insertAll(SQLiteStore& store, QList<ScreenshotRecord> records)
{
    bool allInserted = true;
    for (const ScreenshotRecord& record : records) {
        const bool wasInserted = co_await store.insert(record);
        allInserted = allInserted && wasInserted;
    }
    co_return allInserted;
}

QList<ScreenshotRecord> nextRecords(Library& library)
{
    QList<ScreenshotRecord> records;
    for (int i = 0; i < kInsertions; ++i)
        records.append(library.next());
    return records;
}

void insertInto(benchmark::State& state, Library& library)
{
    const QList<ScreenshotRecord> records = nextRecords(library);
    const WrittenBytes before = writtenBytes();
    bool allInserted = true;
    for (auto _ : state)
        allInserted = QCoro::waitFor(insertAll(*library.store, records));
    if (!allInserted)
        state.SkipWithError("an item was not inserted");
    state.SetItemsProcessed(kInsertions);
    countWritten(state, before);
}

void insertIntoEmpty(benchmark::State& state)
{
    Library library(0);
    insertInto(state, library);
}

void insert(benchmark::State& state)
{
    insertInto(state, keptLibrary<Library>(state.range(0)));
}

QCoro::Task<> registerOften(SQLiteStore& store, QString hash)
{
    for (int i = 0; i < kInsertions; ++i)
        co_await store.registerDuplicate(hash, Date{2'000'000'000.0 + i});
}

void registerDuplicate(benchmark::State& state)
{
    Library& library = keptLibrary<Library>(state.range(0));
    const ScreenshotRecord record = library.next();
    QCoro::waitFor(library.store->insert(record));
    const WrittenBytes before = writtenBytes();
    for (auto _ : state)
        QCoro::waitFor(registerOften(*library.store, record.contentHash));
    state.SetItemsProcessed(kInsertions);
    countWritten(state, before);
}

/// At start-up, with nothing to mend.
void reconcileEqual(benchmark::State& state)
{
    Library& library = keptLibrary<Library>(state.range(0));
    for (auto _ : state)
        QCoro::waitFor(library.store->reconcileProjection());
}

/// The first page that a window asks for while the stores are compared.
void firstPageMeanwhile(benchmark::State& state)
{
    Library& library = keptLibrary<Library>(state.range(0));
    ListRequest request;
    request.limit = 101;
    request.maximumTextLength = 20'000;
    for (auto _ : state) {
        QCoro::Task<bool> reconciling = library.store->reconcileProjection();
        const auto asked = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(QCoro::waitFor(library.store->search(request)));
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - asked).count());
        QCoro::waitFor(std::move(reconciling));
    }
}

void ofLargeLibraries(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100'000)->Unit(benchmark::kMillisecond);
    if (qEnvironmentVariableIsSet("TESSARY_BENCH_MILLION"))
        benchmark->Arg(1'000'000);
}

BENCHMARK(insertIntoEmpty)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(insert)->Apply(ofLargeLibraries)->Iterations(1)->UseRealTime();
BENCHMARK(registerDuplicate)->Apply(ofLargeLibraries)->Iterations(1)->UseRealTime();
BENCHMARK(reconcileEqual)->Apply(ofLargeLibraries)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(firstPageMeanwhile)->Apply(ofLargeLibraries)->Iterations(5)->UseManualTime();

} // namespace
} // namespace tessary::bench
