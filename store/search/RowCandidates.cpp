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
      m_stop(std::move(stop)),
      m_changed(bounds.last),
      m_unindexed(bounds.last)
{
}

void RowCandidates::add(const SearchQuery& query, ScreenshotScope scope)
{
    for (qsizetype place = 0; place < query.keywords.size(); ++place)
        addKeyword(query.keywords.at(place), place);
    const bool hasColumnIndexes = scope != ScreenshotScope::Trash; // whose items they do not hold
    if (query.appName)
        m_isExact =
            hasColumnIndexes && addColumn("source_app_name", "list_apps", *query.appName) && m_isExact;
    if (query.tagName)
        m_isExact = hasColumnIndexes && addColumn("tags_json", "list_tags", *query.tagName) && m_isExact;
    m_changed = collectAll(GramIndex::changedRows(m_reader));
    m_unindexed = collectAll(GramIndex::pendingRows(m_reader));
    for (qint64 row = m_bounds.indexedThrough + 1; row <= m_bounds.last; ++row)
        m_unindexed.insert(row);
    std::stable_sort(m_texts.begin(), m_texts.end(),
                     [](const Text& one, const Text& other) { return one.telling > other.telling; });
}

void RowCandidates::addKeyword(const QString& keyword, qsizetype place)
{
    const GramIndex::Query grams = GramIndex::query(keyword);
    m_isExact = m_isExact && grams.isExact;
    if (grams.match.isEmpty())
        return;
    const bool isBeginning = grams.match.endsWith('*');
    const auto rows =
        std::make_shared<KeywordRows>(KeywordRows{grams.match, fullTextQuery(keyword), place, {}, {}});
    m_texts.append({[this, rows](qsizetype most) { return listKeyword(*rows, most); },
                    isBeginning ? 0 : grams.match.size()});
}

std::optional<RowSet> RowCandidates::listKeyword(KeywordRows& keyword, qsizetype most)
{
    auto& [grams, fullText, place, byGrams, byWords] = keyword;
    if (!byGrams) {
        byGrams.emplace(m_reader.query("SELECT rowid FROM screenshots_grams WHERE screenshots_grams MATCH ?"),
                        m_bounds.last);
        byGrams->statement.bindText(1, grams);
    }
    if (!byWords) {
        if (!collect(byGrams->statement, byGrams->rows, most))
            return std::nullopt;
        byWords.emplace(
            m_reader.query("SELECT rowid FROM main.screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?",
                           {fullText}),
            m_bounds.last);
    }
    if (!collect(byWords->statement, byWords->rows, most))
        return std::nullopt;
    byGrams->rows.unite(byWords->rows);
    byGrams->rows.unite(m_unindexed);
    m_test.setFullTextRows(place, std::move(byWords->rows));
    return std::move(byGrams->rows);
}

/// @returns whether the indexes can tell.
bool RowCandidates::addColumn(const QByteArray& column, const QByteArray& index, const QString& text)
{
    const LikePattern pattern(likePattern(text).toUtf8());
    if (pattern.matches("") || pattern.matches("[]"))
        return false; // the values that the indexes are not asked for
    const auto list = [this, column, index, pattern](qsizetype most) -> std::optional<RowSet> {
        RowSet rows(m_bounds.last);
        const bool areAll = listColumn(column, index, pattern, rows, most);
        return areAll ? std::optional(std::move(rows)) : std::nullopt;
    };
    m_texts.append({list, kTellingColumn});
    return true;
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
        if (std::optional<RowSet> rows = text.listing(most)) {
            intersect(std::move(*rows));
            hasAsked = true;
        } else if (areMany) {
            later.append(text);
        } else {
            m_isExact = false; // and it is left to the test
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
        if (pattern.matches(value) && !collect(withValue, rows, most))
            return false;
    }
    return false;
}

bool RowCandidates::collect(SQLiteStatement& found, RowSet& rows, qsizetype most)
{
    constexpr qsizetype kBetweenLooks = 1000;
    for (qsizetype count = 0; count < most; ++count) {
        if (!found.nextRow())
            return true;
        if (count % kBetweenLooks == 0 && m_stop.stop_requested())
            throw StoreError(StoreError::Case::Prepare, QStringLiteral("interrupted"));
        rows.insert(found.integer(0));
    }
    return false;
}

RowSet RowCandidates::collectAll(SQLiteStatement found)
{
    RowSet rows(m_bounds.last);
    collect(found, rows, kAll);
    return rows;
}

} // namespace tessary
