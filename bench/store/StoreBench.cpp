#include "bench/tools/KeptLibrary.h"
#include "bench/tools/SampleLibrary.h"
#include "store/SQLiteStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <qcoro/qcorotask.h>

/// What the library's changes cost, each with all its commits, in libraries of the given number of items.
/// They lie in the folder for temporary files, which TMPDIR moves to the disk in question.
namespace tessary::bench {
namespace {

constexpr int kInsertions = 1000; // in one run, so few that the library stays of its size

/// Bytes that this process has caused to be written to disks.
double writtenBytes()
{
    QFile file(QStringLiteral("/proc/self/io"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("write_bytes:"))
            return line.mid(line.indexOf(':') + 1).toDouble();
    return 0;
}

/// A library that is filled once and then grows by what the benchmarks add.
class Library {
public:
    explicit Library(qint64 items) : m_paths(AppPaths::create(m_folder.path())), m_items(m_paths)
    {
        if (items > 0)
            m_items.fill(items);
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
    const double before = writtenBytes();
    bool allInserted = true;
    for (auto _ : state)
        allInserted = QCoro::waitFor(insertAll(*library.store, records));
    if (!allInserted)
        state.SkipWithError("an item was not inserted");
    state.SetItemsProcessed(kInsertions);
    state.counters["written_kB_each"] = (writtenBytes() - before) / kInsertions / 1024;
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
    const double before = writtenBytes();
    for (auto _ : state)
        QCoro::waitFor(registerOften(*library.store, record.contentHash));
    state.SetItemsProcessed(kInsertions);
    state.counters["written_kB_each"] = (writtenBytes() - before) / kInsertions / 1024;
}

/// At start-up, with nothing to mend.
void reconcileEqual(benchmark::State& state)
{
    Library& library = keptLibrary<Library>(state.range(0));
    for (auto _ : state)
        QCoro::waitFor(library.store->reconcileProjection());
}

BENCHMARK(insertIntoEmpty)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(insert)->Arg(100'000)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(registerDuplicate)->Arg(100'000)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(reconcileEqual)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace tessary::bench
