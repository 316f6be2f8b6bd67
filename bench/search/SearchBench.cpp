#include "bench/tools/KeptLibrary.h"
#include "bench/tools/SampleLibrary.h"
#include "store/SQLiteStore.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <qcoro/qcorotask.h>

/// What one page of a list costs, from the question on the main thread to the answer there, in libraries of
/// the given number of items. They are made in the folder for temporary files unless
/// TESSARY_BENCH_LIBRARIES names a folder to keep them in; the one of a million only with
/// TESSARY_BENCH_MILLION set, since it takes five minutes and 8 GB.
namespace tessary::bench {
namespace {

constexpr int kPage = 101;
constexpr qsizetype kTextLimit = 20'000;
constexpr double kLastCapture = 1'700'000'000; // of an empty library; 300 s later with each item

class Library {
public:
    explicit Library(qint64 items) : m_items(items)
    {
        const QString kept = qEnvironmentVariable("TESSARY_BENCH_LIBRARIES");
        const QString root = kept.isEmpty() ? m_folder.path() : kept + u'/' + QString::number(items) + u'/';
        const AppPaths paths = AppPaths::create(root);
        if (!QFile::exists(paths.database))
            SampleLibrary(paths).fill(items);
        m_store = QCoro::waitFor(SQLiteStore::open(paths.database));
        markSome();
    }

    [[nodiscard]] ListRequest request(const QString& text) const
    {
        ListRequest request;
        request.rawQuery = text;
        request.limit = kPage;
        request.now = Date{kLastCapture + 300.0 * static_cast<double>(m_items)};
        request.calendar = Calendar{QTimeZone::utc()};
        request.maximumTextLength = kTextLimit;
        return request;
    }
    [[nodiscard]] SQLiteStore& store() { return *m_store; }

private:
    /// A library in use: of the newest thousand items every tenth was used, and every fiftieth trashed.
    void markSome()
    {
        constexpr int kUsedEvery = 10;
        constexpr int kTrashedEvery = 50;
        ListRequest newest = request(QString());
        newest.limit = 1000;
        const QList<ScreenshotRecord> records = QCoro::waitFor(m_store->search(newest));
        for (qsizetype i = 0; i < records.size(); ++i) {
            const ScreenshotRecord& record = records.at(i);
            if (i % kUsedEvery == 1)
                QCoro::waitFor(m_store->markUsed(record.id, record.capturedAt.addingSeconds(60)));
            if (i % kTrashedEvery == 2)
                QCoro::waitFor(m_store->moveToTrash(record.id, record.capturedAt.addingSeconds(90)));
        }
    }

    qint64 m_items;
    QTemporaryDir m_folder;
    std::unique_ptr<SQLiteStore> m_store; // last: closes before the folder goes
};

void measure(benchmark::State& state, Library& library, const ListRequest& request)
{
    qsizetype rows = 0;
    for (auto _ : state)
        rows = QCoro::waitFor(library.store().search(request)).size();
    state.counters["rows"] = static_cast<double>(rows);
}

void list(benchmark::State& state, ScreenshotScope scope, ScreenshotSort sort, int offset)
{
    Library& library = keptLibrary<Library>(state.range(0));
    ListRequest request = library.request(QString());
    request.scope = scope;
    request.sort = sort;
    request.offset = offset;
    measure(state, library, request);
}

void keyword(benchmark::State& state, const QString& text)
{
    Library& library = keptLibrary<Library>(state.range(0));
    measure(state, library, library.request(text));
}

void facets(benchmark::State& state)
{
    Library& library = keptLibrary<Library>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(QCoro::waitFor(library.store().facets()));
}

template <typename... Arguments>
void add(const QString& name, Arguments... arguments)
{
    auto* added = benchmark::RegisterBenchmark(qPrintable(name), arguments...);
    added->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime()
        ->MinTime(0.2)
        ->Arg(10'000)
        ->Arg(100'000);
    if (qEnvironmentVariableIsSet("TESSARY_BENCH_MILLION"))
        added->Arg(1'000'000);
}

void addAll()
{
    constexpr int kDeep = 5000;
    for (const ScreenshotSort sort : kScreenshotSorts)
        add(QStringLiteral("page_") + rawValue(sort), list, ScreenshotScope::All, sort, 0);
    add(QStringLiteral("page_at_5000"), list, ScreenshotScope::All, ScreenshotSort::Newest, kDeep);
    for (const ScreenshotScope scope : kScreenshotScopes)
        add(QStringLiteral("scope_") + rawValue(scope), list, scope, ScreenshotSort::Newest, 0);
    add(QStringLiteral("scope_favorites_fileSize"), list, ScreenshotScope::Favorites,
        ScreenshotSort::FileSize, 0);
    const std::map<QString, QString> keywords{
        {QStringLiteral("none"), QStringLiteral("qqzzxxyy")},
        {QStringLiteral("rare"), QStringLiteral("zshisms")},
        {QStringLiteral("common"), QStringLiteral("the")},
        {QStringLiteral("one_letter"), QStringLiteral("e")},
        {QStringLiteral("two"), QStringLiteral("the 系统")},
        {QStringLiteral("two_one_without_match"), QStringLiteral("the qqzzxxyy")},
        {QStringLiteral("chinese"), QStringLiteral("系统")},
        {QStringLiteral("one_character"), QStringLiteral("的")},
        {QStringLiteral("pinyin"), QStringLiteral("xitong")},
        {QStringLiteral("pinyin_syllable"), QStringLiteral("tong")}};
    for (const auto& [name, text] : keywords)
        add(QStringLiteral("keyword_") + name, keyword, text);
    add(QStringLiteral("facets"), facets);
}

[[maybe_unused]] const bool kAdded = (addAll(), true);

} // namespace
} // namespace tessary::bench
