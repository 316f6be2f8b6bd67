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
        qint64 indexedThrough = 0; ///< The last one that the grams know.
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
    /// Whether one of them has all the texts for certain.
    [[nodiscard]] bool isCertain(qint64 row) const
    {
        return m_isExact && m_texts.isEmpty() && !m_unindexed.contains(row) && !m_changed.contains(row);
    }

private:
    /// Adds so many more rows that have a text at most. @returns all of them, once there are no more.
    using Listing = std::function<std::optional<RowSet>(qsizetype most)>;
    struct Text {
        Listing listing;
        qsizetype telling = 0; ///< Higher for what few rows have, as a rule.
    };
    /// Rows that a statement names, as far as it was asked.
    struct Collection {
        Collection(SQLiteStatement naming, qint64 last) : statement(std::move(naming)), rows(last) {}

        SQLiteStatement statement;
        RowSet rows;
    };
    /// What is known by now of the rows that have a keyword.
    struct KeywordRows {
        QByteArray grams;
        QString fullText;
        qsizetype place;
        std::optional<Collection> byGrams;
        std::optional<Collection> byWords; ///< Begun when those by grams are all there.
    };

    void addKeyword(const QString& keyword, qsizetype place);
    bool addColumn(const QByteArray& column, const QByteArray& index, const QString& text);
    std::optional<RowSet> listKeyword(KeywordRows& keyword, qsizetype most);
    /// @returns whether that were all.
    bool listColumn(const QByteArray& column, const QByteArray& index, const LikePattern& pattern,
                    RowSet& rows, qsizetype most);
    /// @returns whether there are no more than so many more.
    bool collect(SQLiteStatement& found, RowSet& rows, qsizetype most);
    RowSet collectAll(SQLiteStatement found);
    void intersect(RowSet rows);

    SQLiteConnection& m_reader;
    Bounds m_bounds;
    SearchLimits m_limits;
    RowTest& m_test;
    std::stop_token m_stop;
    QList<Text> m_texts; ///< Not asked about, or not to the end.
    bool m_hasAskedForFew = false;
    bool m_isExact = true; ///< What is listed for each text has it, but for changed rows.
    RowSet m_changed;      ///< Named for what they held before, perhaps.
    RowSet m_unindexed;    ///< Not known to the grams as they are; all of them are candidates.
    std::optional<RowSet> m_rows;
};

} // namespace tessary
