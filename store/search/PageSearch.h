#pragma once

#include "store/SearchLimits.h"
#include "store/search/ListOrder.h"
#include "store/search/RowTest.h"

#include <stop_token>

namespace tessary {

/// Finds the rows of one page of a list in the order of the query that defines it, without reading all items.
///
/// At first the list is walked in its order and row after row is tested: what is common fills a page soon.
/// Where too few match, the grams and the full-text table name the rows that may. Few of those are put in
/// order; many are met while the list is walked on. The test decides on each row either way.
class PageSearch {
public:
    /// How the rows were found.
    enum class Way {
        Prescribed, ///< Not at all: the defining query is to answer.
        Tested,     ///< Row after row.
        Sorted,     ///< Few candidates, put in order.
        Met,        ///< Many candidates, met in the list.
    };

    /// @param reader a connection that nothing else uses meanwhile, inside a transaction, prepared by
    /// `GramIndex::prepare`.
    PageSearch(SQLiteConnection& reader, ListOrders& orders, const FullTextTokenizer& tokenizer,
               const SearchLimits& limits);

    /// Whether there is anything to look for other than by the query itself.
    [[nodiscard]] static bool isFor(const ListRequest& request, const SearchQuery& query);
    /// The row ids on the page, in order. Nothing where the defining query has to answer: the index is not
    /// ready, or of no help. @throws StoreError, also when `stop` is requested.
    [[nodiscard]] std::optional<QList<qint64>> rows(const ListRequest& request, const SearchQuery& query,
                                                    const std::stop_token& stop);
    [[nodiscard]] Way way() const { return m_way; } ///< Of the last page.

private:
    [[nodiscard]] std::optional<QList<qint64>>
    rowsOfDates(const ListRequest& request, const ListConditions& ranges, const ListOrder& order);

    SQLiteConnection& m_reader;
    ListOrders& m_orders;
    const FullTextTokenizer& m_tokenizer;
    SearchLimits m_limits;
    Way m_way = Way::Prescribed;
};

} // namespace tessary
