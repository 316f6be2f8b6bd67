#pragma once

#include "search/SearchQuery.h"
#include "store/SearchLimits.h"
#include "store/search/RowSet.h"
#include "store/search/RowTest.h"
#include "store/sqlite/SQLiteConnection.h"

#include <optional>
#include <stop_token>

namespace tessary {

/// The rows in which all texts of a query may be found, as the indexes tell: never too few of them.
class RowCandidates {
public:
    struct Bounds {
        qint64 last = 0;           ///< The highest row id there is.
        qint64 indexedThrough = 0; ///< Rows behind it are not known to the grams; all of them are candidates.
    };

    /// @param reader inside a transaction, prepared by `GramIndex::prepare`. @param test is told what was
    /// found out for certain.
    RowCandidates(SQLiteConnection& reader, const Bounds& bounds, const SearchLimits& limits, RowTest& test,
                  std::stop_token stop);

    /// Nothing when no index can tell. @throws StoreError, also when a stop is requested.
    [[nodiscard]] std::optional<RowSet> find(const SearchQuery& query);

private:
    struct Keyword {
        qsizetype place = 0; ///< Among the query's.
        QByteArray grams;
        QString fullText;
    };

    [[nodiscard]] static QList<Keyword> mostTellingFirst(const SearchQuery& query);
    /// Nothing when they are more than so many.
    [[nodiscard]] std::optional<RowSet> rowsOf(const Keyword& keyword, qsizetype most);
    bool collect(const QByteArray& sql, QByteArrayView match, RowSet& rows, qsizetype most);

    SQLiteConnection& m_reader;
    Bounds m_bounds;
    SearchLimits m_limits;
    RowTest& m_test;
    std::stop_token m_stop;
};

} // namespace tessary
