#pragma once

#include "search/ListRequest.h"
#include "search/SearchQuery.h"
#include "store/SearchLimits.h"
#include "store/search/RowSet.h"
#include "store/search/RowTest.h"
#include "store/sqlite/SQLiteConnection.h"

#include <functional>
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

    /// What there is to ask about; once, before `narrow`.
    void add(const SearchQuery& query, ScreenshotScope scope);
    /// Asks about some more of it: at first about all that few rows have, then about one text after the
    /// other, the most telling ones first. @returns whether there was more to ask. @throws StoreError, also
    /// when a stop is requested.
    bool narrow();
    [[nodiscard]] bool canNarrow() const { return !m_texts.isEmpty(); }
    /// As they are known by now; nothing before `narrow`.
    [[nodiscard]] const std::optional<RowSet>& rows() const { return m_rows; }

private:
    /// Puts the rows that have a text into the set. @returns false for more than so many, of which only some
    /// are there then.
    using Listing = std::function<bool(RowSet&, qsizetype most)>;
    struct Text {
        Listing listing;
        qsizetype telling = 0; ///< Higher for what few rows have, as a rule.
    };

    void addKeyword(const QString& keyword, qsizetype place);
    void addColumn(const QByteArray& column, const QByteArray& index, const QString& text);
    bool listKeyword(const QByteArray& grams, const QString& fullText, qsizetype place, RowSet& rows,
                     qsizetype most);
    bool listColumn(const QByteArray& column, const QByteArray& index, const LikePattern& pattern,
                    RowSet& rows, qsizetype most);
    bool collect(SQLiteStatement found, RowSet& rows, qsizetype most);
    void intersect(RowSet rows);

    SQLiteConnection& m_reader;
    Bounds m_bounds;
    SearchLimits m_limits;
    RowTest& m_test;
    std::stop_token m_stop;
    QList<Text> m_texts; ///< Not asked about, or not to the end.
    bool m_hasAskedForFew = false;
    std::optional<RowSet> m_rows;
};

} // namespace tessary
