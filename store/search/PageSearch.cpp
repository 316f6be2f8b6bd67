#include "store/search/PageSearch.h"

#include "store/ProjectionSchema.h"
#include "store/StoreError.h"
#include "store/grams/GramIndex.h"
#include "store/search/RowCandidates.h"

#include <cmath>
#include <limits>

namespace tessary {
namespace {

/// How many rows are tested until so many match, if they go on as they did. Few matches say little yet, so
/// they count for as many as there might have been.
qint64 foreseenTests(qint64 tested, qint64 matches, qint64 wanted)
{
    const double many = static_cast<double>(matches);
    const double likely = many + 2 * std::sqrt(many) + 1;
    return static_cast<qint64>(static_cast<double>(tested * wanted) / likely);
}

/// One search from its beginning to its end.
class Search {
public:
    Search(SQLiteConnection& reader, const ListOrder& order, ListConditions ranges, QByteArray listOrder,
           RowTest& test, qsizetype wanted, std::stop_token stop)
        : m_reader(reader),
          m_order(order),
          m_ranges(std::move(ranges)),
          m_test(test),
          m_wanted(wanted),
          m_stop(std::move(stop)),
          m_list(reader.queryOnce("SELECT s.rowid FROM screenshots s INDEXED BY " + order.index + " WHERE " +
                                      m_ranges.texts.join(" AND ") + " ORDER BY " +
                                      (order.isSorted ? order.total : listOrder),
                                  m_ranges.bindings))
    {
    }

    enum class Outcome { IsDone, IsEndless };

    /// Tests the rows of the list in order, unless it looks as if more of them than so many had to be tested.
    Outcome walkAndTest(qint64 most, int betweenLooks);
    /// Goes on through the list after that, but tests candidates only, and so many of them.
    Outcome walkOn(const RowCandidates& candidates, qint64 most);
    /// Begins anew, with candidates that are put in order.
    void sort(const RowCandidates& candidates);

    [[nodiscard]] const QList<qint64>& matches() const { return m_matches; }

private:
    [[nodiscard]] bool isFull() const { return m_matches.size() >= m_wanted; }
    void test(qint64 row);

    SQLiteConnection& m_reader;
    const ListOrder& m_order;
    ListConditions m_ranges;
    RowTest& m_test;
    qsizetype m_wanted;
    std::stop_token m_stop;
    SQLiteStatement m_list;
    QList<qint64> m_matches;
};

void Search::test(qint64 row)
{
    if (m_stop.stop_requested())
        throw StoreError(StoreError::Case::Prepare, QStringLiteral("interrupted"));
    if (m_test.matches(row))
        m_matches.append(row);
}

Search::Outcome Search::walkAndTest(qint64 most, int betweenLooks)
{
    qint64 tested = 0;
    while (!isFull() && m_list.nextRow()) {
        test(m_list.integer(0));
        ++tested;
        if (isFull() || tested % betweenLooks != 0)
            continue;
        if (tested > most || foreseenTests(tested, m_matches.size(), m_wanted) > most)
            return Outcome::IsEndless;
    }
    return Outcome::IsDone;
}

Search::Outcome Search::walkOn(const RowCandidates& candidates, qint64 most)
{
    const RowSet& rows = *candidates.rows();
    qint64 tested = 0;
    while (!isFull() && m_list.nextRow()) {
        const qint64 row = m_list.integer(0);
        if (!rows.contains(row))
            continue;
        if (candidates.isCertain(row)) {
            m_matches.append(row);
            continue;
        }
        test(row);
        if (++tested >= most)
            return Outcome::IsEndless;
    }
    return Outcome::IsDone;
}

void Search::sort(const RowCandidates& candidates)
{
    QByteArrayList rows;
    candidates.rows()->forEach([&rows](qint64 row) { rows.append(QByteArray::number(row)); });
    SQLiteStatement sorted = m_reader.queryOnce(
        "SELECT s.rowid FROM json_each(?) c CROSS JOIN screenshots s ON s.rowid = c.value WHERE " +
            m_ranges.texts.join(" AND ") + " ORDER BY " + m_order.total,
        QList<SQLiteValue>{QString::fromLatin1('[' + rows.join(',') + ']')} + m_ranges.bindings);
    m_matches.clear();
    while (!isFull() && sorted.nextRow())
        test(sorted.integer(0));
}

/// How the search came to its end.
PageSearch::Way findAmong(RowCandidates& candidates, Search& search, const SearchLimits& limits)
{
    while (candidates.narrow()) {
        if (candidates.rows()->count() <= limits.mostSorted) {
            search.sort(candidates);
            return PageSearch::Way::Sorted;
        }
        const qint64 most = candidates.canNarrow() ? limits.mostTested : std::numeric_limits<qint64>::max();
        if (search.walkOn(candidates, most) == Search::Outcome::IsDone)
            return PageSearch::Way::Met;
    }
    return PageSearch::Way::Prescribed;
}

bool hasTexts(const SearchQuery& query)
{
    return !query.keywords.isEmpty() || query.appName || query.tagName;
}

/// A list from a date on, or up to one, that is not in the order of dates: its index would be walked for
/// rows of some days. Lists of favourites are short anyway, and that of the trash has no order.
bool isOfDatesInOtherOrder(const ListRequest& request, const SearchQuery& query)
{
    const bool isOfDates = query.before || query.after || request.scope == ScreenshotScope::Today ||
                           request.scope == ScreenshotScope::Last7Days ||
                           request.scope == ScreenshotScope::Last30Days;
    const bool isElsewhere = query.favoritesOnly || request.scope == ScreenshotScope::Favorites ||
                             request.scope == ScreenshotScope::Trash;
    return isOfDates && !isElsewhere &&
           (request.sort == ScreenshotSort::RecentlyUsed || request.sort == ScreenshotSort::FileSize);
}

/// Whether rows can be told by their ids from the first to the last, and a set of them is no burden.
bool haveOrdinaryIds(qint64 first, qint64 last)
{
    constexpr qint64 kHighest = 100'000'000;
    return first > 0 && last <= kHighest;
}

} // namespace

PageSearch::PageSearch(SQLiteConnection& reader, ListOrders& orders, const FullTextTokenizer& tokenizer,
                       const SearchLimits& limits)
    : m_reader(reader),
      m_orders(orders),
      m_tokenizer(tokenizer),
      m_limits(limits)
{
}

bool PageSearch::isFor(const ListRequest& request, const SearchQuery& query)
{
    constexpr qsizetype kMostKeywords = 64;
    return request.limit > 0 && request.offset >= 0 && query.keywords.size() <= kMostKeywords &&
           (hasTexts(query) || isOfDatesInOtherOrder(request, query));
}

std::optional<QList<qint64>> PageSearch::rows(const ListRequest& request, const SearchQuery& query,
                                              const std::stop_token& stop)
{
    m_way = Way::Prescribed;
    const qint64 first = m_reader.integerResult("SELECT min(rowid) FROM screenshots");
    const RowCandidates::Bounds bounds{m_reader.integerResult("SELECT max(rowid) FROM screenshots"),
                                       GramIndex::indexedThrough(m_reader)};
    if (!haveOrdinaryIds(first, bounds.last) || !hasAlignedSearchRows(m_reader))
        return std::nullopt;
    const ListConditions ranges = rangeConditions(query, request);
    const std::optional<ListOrder> order = m_orders.order(ranges, request.sort);
    if (!order)
        return std::nullopt;
    if (!hasTexts(query))
        return rowsOfDates(request, ranges, *order);
    RowTest test(m_reader, m_tokenizer, query);
    Search search(m_reader, *order, ranges, orderText(request.sort), test,
                  qsizetype{request.offset} + request.limit, stop);
    m_way = Way::Tested;
    const bool isIndexed = GramIndex::unindexedRows(m_reader) <= m_limits.mostUnindexed;
    const qint64 worthTesting = isIndexed ? bounds.last / m_limits.rowsPerTested : bounds.last;
    const qint64 most = std::min<qint64>(m_limits.mostTested, worthTesting);
    const bool isDeep = request.offset >= most; // what comes before would all be tested
    if ((isDeep && isIndexed) ||
        search.walkAndTest(most, m_limits.rowsBetweenLooks) == Search::Outcome::IsEndless) {
        if (!isIndexed)
            return std::nullopt;
        RowCandidates candidates(m_reader, bounds, m_limits, test, stop);
        candidates.add(query, request.scope);
        m_way = findAmong(candidates, search, m_limits);
    }
    if (m_way == Way::Prescribed)
        return std::nullopt;
    return search.matches().mid(request.offset);
}

std::optional<QList<qint64>> PageSearch::rowsOfDates(const ListRequest& request, const ListConditions& ranges,
                                                     const ListOrder& order)
{
    const QByteArray found = "SELECT s.rowid FROM screenshots s INDEXED BY list_newest WHERE " +
                             ranges.texts.join(" AND ") + " LIMIT " +
                             QByteArray::number(m_limits.mostSorted + 1);
    if (m_reader.integerResult("SELECT count(*) FROM (" + found + ")", ranges.bindings) > m_limits.mostSorted)
        return std::nullopt;
    SQLiteStatement sorted = m_reader.query(
        "SELECT s.rowid FROM (" + found + ") c CROSS JOIN screenshots s ON s.rowid = c.rowid ORDER BY " +
            order.total + " LIMIT ? OFFSET ?",
        ranges.bindings + QList<SQLiteValue>{qint64{request.limit}, qint64{request.offset}});
    QList<qint64> rows;
    while (sorted.nextRow())
        rows.append(sorted.integer(0));
    m_way = Way::Sorted;
    return rows;
}

} // namespace tessary
