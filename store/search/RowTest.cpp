#include "store/search/RowTest.h"

#include "store/ListQuery.h"
#include "store/search/SearchedColumns.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr int kFullTextColumns = 6;
constexpr char kFullTexts[] =
    "SELECT c1, c2, c3, c4, c5, c6 FROM main.screenshots_fts_v5_content WHERE id = ?";

/// @param all or only those that `app:` and `tag:` look into, which are short.
QByteArray textsQuery(bool all)
{
    QByteArrayList columns;
    for (size_t i = 0; i < kSearchedColumns.size(); ++i) {
        const bool isOfOperator = i == kSearchedApp || i == kSearchedTags;
        columns.append(all || isOfOperator ? kSearchedColumns.at(i) : "NULL");
    }
    return "SELECT " + columns.join(", ") + " FROM main.screenshots WHERE rowid = ?";
}

LikePattern patternOf(const QString& text)
{
    return LikePattern(likePattern(text).toUtf8());
}

/// The same statement for another row.
bool moveTo(SQLiteStatement& statement, qint64 row)
{
    statement.reset();
    statement.bindInteger(1, row);
    return statement.nextRow();
}

} // namespace

RowTest::RowTest(SQLiteConnection& reader, const FullTextTokenizer& tokenizer, const SearchQuery& query)
    : m_tokenizer(tokenizer),
      m_texts(reader.query(textsQuery(!query.keywords.isEmpty()))),
      m_fullTexts(reader.query(kFullTexts))
{
    for (const QString& keyword : query.keywords)
        m_keywords.push_back({patternOf(keyword), {fullTextQuery(keyword), tokenizer}, std::nullopt});
    if (query.appName)
        m_app = patternOf(*query.appName);
    if (query.tagName)
        m_tags = patternOf(*query.tagName);
}

void RowTest::setFullTextRows(qsizetype keyword, RowSet rows)
{
    m_keywords.at(static_cast<size_t>(keyword)).fullTextRows = std::move(rows);
}

bool RowTest::holds(const LikePattern& pattern, size_t column) const
{
    const int index = static_cast<int>(column);
    return !m_texts.isNull(index) && pattern.matches(m_texts.bytes(index));
}

bool RowTest::isInAnyColumn(const LikePattern& pattern) const
{
    for (size_t column = 0; column < kSearchedColumns.size(); ++column) {
        if (holds(pattern, column))
            return true;
    }
    return false;
}

bool RowTest::isInFullText(const Keyword& keyword, qint64 row)
{
    if (keyword.fullTextRows)
        return keyword.fullTextRows->contains(row);
    if (!moveTo(m_fullTexts, row))
        return false;
    for (int column = 0; column < kFullTextColumns; ++column) {
        if (keyword.phrase.isIn(m_fullTexts.bytes(column), m_tokenizer))
            return true;
    }
    return false;
}

bool RowTest::matches(qint64 row)
{
    if (!moveTo(m_texts, row))
        return false;
    if ((m_app && !holds(*m_app, kSearchedApp)) || (m_tags && !holds(*m_tags, kSearchedTags)))
        return false;
    return std::all_of(m_keywords.begin(), m_keywords.end(), [&](const Keyword& keyword) {
        return isInAnyColumn(keyword.pattern) || isInFullText(keyword, row);
    });
}

} // namespace tessary
