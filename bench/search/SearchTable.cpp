#include "base/Error.h"
#include "bench/search/SearchCases.h"
#include "search/SearchQueryParser.h"
#include "store/AppPaths.h"
#include "store/FullTextIdentifiers.h"
#include "store/Projection.h"
#include "store/SQLiteStore.h"
#include "store/sqlite/LikeFunction.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>

/// search_table FOLDER: what pages of the library there take, by the query that defines them and by the way
/// that is quick, in milliseconds; medians. The library is made findable by its grams first, and otherwise
/// left as it is.
namespace tessary::bench {
namespace {

constexpr qint64 kRowsIndexedAtOnce = 256;

/// The median of some runs after the first, in milliseconds.
template <typename Work>
double median(Work work)
{
    constexpr size_t kMostRuns = 15;
    constexpr size_t kFewestRuns = 3;
    constexpr double kEnough = 2000;
    work();
    std::vector<double> times;
    double total = 0;
    while (times.size() < kFewestRuns || (times.size() < kMostRuns && total < kEnough)) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        total += times.back();
    }
    std::nth_element(times.begin(), times.begin() + static_cast<ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

struct Comparison {
    double prescribed = 0; ///< Milliseconds.
    double ours = 0;
    bool areEqual = false;
};

class Table {
public:
    explicit Table(const QString& projectionPath) : m_projection(projectionPath), m_counter(projectionPath)
    {
        installLikeFunction(m_counter.handle());
        installFullTextIdentifiers(m_counter);
        index();
    }

    void print();

private:
    void index();
    void printSearches(const SearchCases& cases);
    void printLists(const SearchCases& cases);
    void printFacets();
    void printLine(const SearchCase& line);
    [[nodiscard]] Comparison compare(const ListRequest& request);
    [[nodiscard]] qint64 matches(const ListRequest& request);
    [[nodiscard]] Date extreme(const char* function);

    Projection m_projection;
    SQLiteConnection m_counter; ///< Counts as quickly as the prescribed query does.
};

void Table::index()
{
    QElapsedTimer timer;
    timer.start();
    while (m_projection.indexGrams(kRowsIndexedAtOnce))
        ;
    std::printf("gram index brought up to date in %.1f s\n", static_cast<double>(timer.elapsed()) / 1000);
}

Date Table::extreme(const char* function)
{
    SQLiteStatement row = m_counter.query(QByteArray("SELECT ") + function +
                                          "(captured_at) FROM screenshots WHERE is_deleted = 0");
    return row.nextRow() ? Date{row.real(0)} : Date();
}

/// How many items are on all pages together.
qint64 Table::matches(const ListRequest& request)
{
    constexpr qsizetype kLimitAndOffset = 2;
    ListQuery query = listQuery(request);
    const qsizetype from = query.sql.indexOf("\nFROM ");
    const qsizetype order = query.sql.indexOf("\nORDER BY ");
    query.bindings.resize(query.bindings.size() - kLimitAndOffset);
    return m_counter.integerResult("SELECT count(*)" + query.sql.mid(from, order - from), query.bindings);
}

Comparison Table::compare(const ListRequest& request)
{
    Comparison comparison;
    comparison.areEqual = m_projection.prescribedPage(request, {}) == m_projection.page(request, {});
    comparison.prescribed = median([&] { (void)m_projection.prescribedPage(request, {}); });
    comparison.ours = median([&] { (void)m_projection.page(request, {}); });
    return comparison;
}

void Table::printLine(const SearchCase& line)
{
    const Comparison comparison = compare(line.request);
    std::printf("| %s | `%s` | %lld | %.2f | %.2f | %.1f |%s\n", qUtf8Printable(line.name),
                qUtf8Printable(line.request.rawQuery), static_cast<long long>(matches(line.request)),
                comparison.prescribed, comparison.ours, comparison.prescribed / comparison.ours,
                comparison.areEqual ? "" : " DIFFERENT");
    std::fflush(stdout);
}

void Table::printSearches(const SearchCases& cases)
{
    std::puts(
        "\n| search | typed | items found | prescribed ms | ours ms | ratio |\n|---|---|--:|--:|--:|--:|");
    QList<SearchCase> lines = cases.searches();
    for (const SearchCase& line : std::as_const(lines))
        printLine(line);
    SearchCase last = lines.at(3); // the common word
    last.name += QStringLiteral(", last page");
    last.request.offset = static_cast<int>(std::max<qint64>(0, matches(last.request) - last.request.limit));
    printLine(last);
    for (const SearchCase& line : cases.farPages())
        printLine(line);
}

void Table::printLists(const SearchCases& cases)
{
    std::puts("\nFirst page of each list, prescribed / ours, ms:\n");
    std::fputs("| scope |", stdout);
    for (const ScreenshotSort sort : kScreenshotSorts)
        std::printf(" %s |", qPrintable(rawValue(sort)));
    std::puts("\n|---|--:|--:|--:|--:|--:|");
    for (const ScreenshotScope scope : kScreenshotScopes) {
        std::printf("| %s |", qPrintable(rawValue(scope)));
        for (const ScreenshotSort sort : kScreenshotSorts) {
            const Comparison comparison = compare(cases.list(scope, sort));
            std::printf(" %.2f / %.2f%s |", comparison.prescribed, comparison.ours,
                        comparison.areEqual ? "" : " DIFFERENT");
            std::fflush(stdout);
        }
        std::puts("");
    }
}

void Table::printFacets()
{
    const auto prescribed = [this] {
        (void)m_counter.stringResults(
            "SELECT DISTINCT source_app_name FROM screenshots WHERE is_deleted = 0 AND "
            "source_app_name IS NOT NULL AND length(trim(source_app_name)) > 0 "
            "ORDER BY source_app_name COLLATE NOCASE");
        (void)m_counter.stringResults("SELECT tags_json FROM screenshots WHERE is_deleted = 0");
    };
    const double ours = median([this] { (void)m_projection.facets(); });
    std::printf("\nfacets: prescribed (without decoding the tags) %.2f ms, ours %.2f ms\n",
                median(prescribed), ours);
}

void Table::print()
{
    const qint64 items = m_projection.rowCount();
    std::printf("%lld items, medians\n", static_cast<long long>(items));
    const SearchCases cases(SampleWords::pick(m_counter), items, extreme("min"), extreme("max"));
    printSearches(cases);
    printLists(cases);
    printFacets();
}

} // namespace
} // namespace tessary::bench

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: search_table FOLDER\n", stderr);
        return 2;
    }
    try {
        const QString database = tessary::AppPaths::create(QString::fromLocal8Bit(argv[1])).database;
        if (!QFile::exists(database)) {
            std::fputs("search_table: there is no library\n", stderr);
            return 1;
        }
        tessary::bench::Table(tessary::SQLiteStore::projectionPath(database)).print();
    } catch (const tessary::Error& error) {
        std::fprintf(stderr, "search_table: %s\n", error.what());
        return 1;
    }
    return 0;
}
