#include "store/search/RowCandidates.h"

#include "store/ListQuery.h"
#include "store/StoreError.h"
#include "store/grams/GramIndex.h"

#include <algorithm>
#include <limits>

namespace tessary {

RowCandidates::RowCandidates(SQLiteConnection& reader, const Bounds& bounds, const SearchLimits& limits,
                             RowTest& test, std::stop_token stop)
    : m_reader(reader),
      m_bounds(bounds),
      m_limits(limits),
      m_test(test),
      m_stop(std::move(stop))
{
}

QList<RowCandidates::Keyword> RowCandidates::mostTellingFirst(const SearchQuery& query)
{
    QList<Keyword> keywords;
    for (qsizetype place = 0; place < query.keywords.size(); ++place) {
        const QByteArray grams = GramIndex::query(query.keywords.at(place));
        if (!grams.isEmpty())
            keywords.append({place, grams, fullTextQuery(query.keywords.at(place))});
    }
    // Long queries are of long words, which are rare; the beginning of a gram is asked for last.
    std::stable_sort(keywords.begin(), keywords.end(), [](const Keyword& one, const Keyword& other) {
        const bool isBeginning = one.grams.endsWith('*');
        if (isBeginning != other.grams.endsWith('*'))
            return !isBeginning;
        return one.grams.size() > other.grams.size();
    });
    return keywords;
}

std::optional<RowSet> RowCandidates::find(const SearchQuery& query)
{
    constexpr qsizetype kAll = std::numeric_limits<qsizetype>::max();
    const QList<Keyword> keywords = mostTellingFirst(query);
    std::optional<RowSet> candidates;
    for (const qsizetype most : {m_limits.mostListed, kAll}) {
        for (const Keyword& keyword : keywords) {
            std::optional<RowSet> rows = rowsOf(keyword, most);
            if (!rows)
                continue;
            if (candidates)
                rows->intersect(*candidates);
            candidates = std::move(rows);
            if (candidates->count() <= m_limits.mostSorted)
                return candidates;
        }
        if (candidates)
            return candidates;
    }
    return std::nullopt;
}

std::optional<RowSet> RowCandidates::rowsOf(const Keyword& keyword, qsizetype most)
{
    RowSet rows(m_bounds.last);
    if (!collect("SELECT rowid FROM screenshots_grams WHERE screenshots_grams MATCH ?", keyword.grams, rows,
                 most))
        return std::nullopt;
    RowSet fullText(m_bounds.last);
    if (!collect("SELECT rowid FROM main.screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?",
                 keyword.fullText.toUtf8(), fullText, most))
        return std::nullopt;
    rows.unite(fullText);
    for (qint64 row = m_bounds.indexedThrough + 1; row <= m_bounds.last; ++row)
        rows.insert(row);
    m_test.setFullTextRows(keyword.place, std::move(fullText));
    return rows;
}

/// @returns false for more than so many, of which only some were collected.
bool RowCandidates::collect(const QByteArray& sql, QByteArrayView match, RowSet& rows, qsizetype most)
{
    constexpr qsizetype kBetweenLooks = 1000;
    SQLiteStatement found = m_reader.query(sql);
    found.bindText(1, match);
    for (qsizetype count = 0; found.nextRow(); ++count) {
        if (count >= most)
            return false;
        if (count % kBetweenLooks == 0 && m_stop.stop_requested())
            throw StoreError(StoreError::Case::Prepare, QStringLiteral("interrupted"));
        rows.insert(found.integer(0));
    }
    return true;
}

} // namespace tessary
