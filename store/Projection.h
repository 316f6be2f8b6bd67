#pragma once

#include "store/LibraryCounts.h"
#include "store/ListQuery.h"
#include "store/PinyinText.h"
#include "store/ScreenshotRecord.h"
#include "store/SearchLimits.h"
#include "store/grams/GramIndex.h"
#include "store/search/FullTextPhrase.h"
#include "store/search/ListOrder.h"
#include "store/search/PageSearch.h"
#include "store/sqlite/SQLiteConnection.h"

#include <stop_token>

namespace tessary {

/// The database behind every list and search: one flat row an item, and a full-text row with the same row
/// id, so that neither has to be searched for by its text id. Used from the store's lane; blocks on the
/// disk; throws StoreError.
class Projection {
public:
    /// Opens, or creates, the file and brings its schema up to date. @throws StoreError.
    explicit Projection(const QString& path, const SearchLimits& limits = {});

    [[nodiscard]] SQLiteConnection& connection() { return m_connection; }

    /// Adds the row unless its id or content hash exists. @returns whether it was added.
    bool insertProjection(const ScreenshotRecord& record);
    /// Writes the item's full-text row anew.
    void updateSearchIndex(const ScreenshotRecord& record);
    /// Runs one UPDATE of ours whose last parameter is the id.
    void update(const QByteArray& assignments, QList<SQLiteValue> values, const QUuid& id);
    /// Removes the item and its full-text row, by the id as the row spells it.
    void remove(const QString& idText);
    /// Removes all of them, in one transaction.
    void removeAll();
    /// The same within a transaction of the caller's.
    void removeRows();
    [[nodiscard]] LibraryCounts counts();

    [[nodiscard]] qint64 rowCount();
    [[nodiscard]] qint64 searchRowCount();
    /// Every item in the order of its identifier, in the column order of `kProjectionColumns`.
    [[nodiscard]] SQLiteStatement rowsInIdentifierOrder();
    /// The same rows in the order in which they lie on the disk, which is much quicker.
    [[nodiscard]] SQLiteStatement rowsInStoredOrder();
    /// One page of a list, by whichever way is quick; contents are cut as in `decodeProjectionRow`. Once a
    /// stop is requested it ends early with an error.
    [[nodiscard]] QList<ScreenshotRecord> page(const ListRequest& request, const std::stop_token& stop);
    /// How the last page was found.
    [[nodiscard]] PageSearch::Way wayOfPage() const { return m_wayOfPage; }
    /// The same page by the one query that defines it.
    [[nodiscard]] QList<ScreenshotRecord> prescribedPage(const ListRequest& request,
                                                         const std::stop_token& stop);
    /// Whether new rows have become so many that `indexGrams` is worth its transaction.
    [[nodiscard]] bool isIndexingDue();
    /// Makes up to so many rows more findable by their grams, in one transaction; fewer when that takes
    /// longer than it may. @returns whether there is more to do.
    bool indexGrams(qint64 mostRows, std::chrono::milliseconds longest = std::chrono::milliseconds::max());
    /// So that all of them are to be indexed again.
    void forgetGrams();
    /// Whether the row, if there is one, can be found by all that it holds.
    [[nodiscard]] bool hasRightGrams(qint64 row);
    /// Whether the full-text row of that row id is that of the item, if there is one.
    [[nodiscard]] bool hasRightSearchRow(qint64 row);
    /// The highest row id of an item, 0 without any.
    [[nodiscard]] qint64 lastRow();
    /// What the items outside the trash can be narrowed to.
    [[nodiscard]] LibraryFacets facets();
    /// Rows of a query that selects the columns in the order of `kProjectionColumns`.
    [[nodiscard]] QList<ScreenshotRecord> records(const QByteArray& sql,
                                                  const QList<SQLiteValue>& bindings = {});

private:
    [[nodiscard]] static SQLiteConnection openedWriter(const QString& path);
    [[nodiscard]] static SQLiteConnection openedReader(const QString& path);
    [[nodiscard]] std::optional<QList<ScreenshotRecord>>
    quickPage(const ListRequest& request, const SearchQuery& query, const std::stop_token& stop);

    SQLiteConnection m_connection;
    SQLiteConnection m_reader; ///< Lists only. So a query can be interrupted, and no change ever is.
    GramIndex m_grams;
    FullTextTokenizer m_tokenizer;
    ListOrders m_orders;
    PinyinText m_pinyin;
    SearchLimits m_limits;
    PageSearch::Way m_wayOfPage = PageSearch::Way::Prescribed;
};

} // namespace tessary
