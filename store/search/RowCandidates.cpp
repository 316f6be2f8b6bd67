#include "store/search/RowCandidates.h"

#include "store/ListQuery.h"
#include "store/StoreError.h"
#include "store/grams/GramIndex.h"

#include <algorithm>
#include <limits>

namespace tessary {
namespace {

constexpr qsizetype kAll = std::numeric_limits<qsizetype>::max();

/// How telling texts are: keywords by their length, which grams know; columns have few values, which are
/// found by index.
constexpr qsizetype kTellingColumn = 1000;

} // namespace

RowCandidates::RowCandidates(SQLiteConnection& reader, const Bounds& bounds, const SearchLimits& limits,
                             RowTest& test, std::stop_token stop)
    : m_reader(reader),
      m_bounds(bounds),
      m_limits(limits),
      m_test(test),
      m_stop(std::move(stop))
{
}

void RowCandidates::add(const SearchQuery& query, ScreenshotScope scope)
{
    for (qsizetype place = 0; place < query.keywords.size(); ++place)
        addKeyword(query.keywords.at(place), place);
    if (scope != ScreenshotScope::Trash) { // whose items the two indexes do not have
        if (query.appName)
            addColumn("source_app_name", "list_apps", *query.appName);
        if (query.tagName)
            addColumn("tags_json", "list_tags", *query.tagName);
    }
    std::stable_sort(m_texts.begin(), m_texts.end(),
                     [](const Text& one, const Text& other) { return one.telling > other.telling; });
}

void RowCandidates::addKeyword(const QString& keyword, qsizetype place)
{
    const QByteArray grams = GramIndex::query(keyword);
    if (grams.isEmpty())
        return;
    const bool isBeginning = grams.endsWith('*');
    m_texts.append({[this, grams, fullText = fullTextQuery(keyword), place](RowSet& rows, qsizetype most) {
                        return listKeyword(grams, fullText, place, rows, most);
                    },
                    isBeginning ? 0 : grams.size()});
}

void RowCandidates::addColumn(const QByteArray& column, const QByteArray& index, const QString& text)
{
    const LikePattern pattern(likePattern(text).toUtf8());
    if (pattern.matches("") || pattern.matches("[]"))
        return; // the values that the indexes are not asked for
    m_texts.append({[this, column, index, pattern](RowSet& rows, qsizetype most) {
                        return listColumn(column, index, pattern, rows, most);
                    },
                    kTellingColumn});
}

bool RowCandidates::narrow()
{
    const qsizetype most = m_hasAskedForFew ? kAll : m_limits.mostListed;
    const bool areMany = !m_hasAskedForFew;
    m_hasAskedForFew = true;
    QList<Text> later;
    bool hasAsked = false;
    while (!m_texts.isEmpty() && (areMany || !hasAsked)) {
        const Text text = m_texts.takeFirst();
        RowSet rows(m_bounds.last);
        if (text.listing(rows, most)) {
            intersect(std::move(rows));
            hasAsked = true;
        } else if (areMany) {
            later.append(text);
        }
        if (m_rows && m_rows->count() <= m_limits.mostSorted)
            break;
    }
    m_texts = later + m_texts;
    return hasAsked || (areMany && !m_texts.isEmpty() && narrow());
}

void RowCandidates::intersect(RowSet rows)
{
    if (m_rows)
        rows.intersect(*m_rows);
    m_rows = std::move(rows);
}

bool RowCandidates::listKeyword(const QByteArray& grams, const QString& fullText, qsizetype place,
                                RowSet& rows, qsizetype most)
{
    SQLiteStatement byGrams =
        m_reader.query("SELECT rowid FROM screenshots_grams WHERE screenshots_grams MATCH ?");
    byGrams.bindText(1, grams);
    if (!collect(std::move(byGrams), rows, most))
        return false;
    RowSet byWords(m_bounds.last);
    if (!collect(m_reader.query("SELECT rowid FROM main.screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?",
                                {fullText}),
                 byWords, most))
        return false;
    rows.unite(byWords);
    for (qint64 row = m_bounds.indexedThrough + 1; row <= m_bounds.last; ++row)
        rows.insert(row);
    m_test.setFullTextRows(place, std::move(byWords));
    return true;
}

/// The column's different values are few, and are looked at one after the other.
bool RowCandidates::listColumn(const QByteArray& column, const QByteArray& index, const LikePattern& pattern,
                               RowSet& rows, qsizetype most)
{
    constexpr int kMostValues = 5000;
    const QByteArray condition = index == "list_tags" ? " AND tags_json <> '[]'" : "";
    const QByteArray source = " FROM screenshots INDEXED BY " + index + " WHERE is_deleted = 0" + condition;
    QByteArray value = "";
    for (int count = 0; count < kMostValues; ++count) {
        SQLiteStatement next =
            m_reader.query("SELECT min(" + column + ")" + source + " AND " + column + " > ?");
        next.bindText(1, value);
        if (!next.nextRow() || next.isNull(0))
            return true;
        value = next.bytes(0).toByteArray();
        SQLiteStatement withValue = m_reader.query("SELECT rowid" + source + " AND " + column + " = ?");
        withValue.bindText(1, value);
        if (pattern.matches(value) && !collect(std::move(withValue), rows, most))
            return false;
    }
    return false;
}

bool RowCandidates::collect(SQLiteStatement found, RowSet& rows, qsizetype most)
{
    constexpr qsizetype kBetweenLooks = 1000;
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
