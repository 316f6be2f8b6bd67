#include "store/ListQuery.h"

#include "search/SearchQueryParser.h"
#include "store/FtsExpression.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"

namespace tessary {
namespace {

/// SQLite takes a time that grows with their square, and nothing can interrupt it; these take a second.
constexpr qsizetype kMostKeywords = 4000;
constexpr int kPatternsOfKeyword = 7;
constexpr char kKeywordCondition[] = "(\n"
                                     "s.source_app_name LIKE ? COLLATE NOCASE OR\n"
                                     "s.tags_json LIKE ? COLLATE NOCASE OR\n"
                                     "s.note LIKE ? COLLATE NOCASE OR\n"
                                     "s.filename LIKE ? COLLATE NOCASE OR\n"
                                     "s.content_text LIKE ? COLLATE NOCASE OR\n"
                                     "s.ocr_text LIKE ? COLLATE NOCASE OR\n"
                                     "s.generated_title LIKE ? COLLATE NOCASE OR\n"
                                     "s.id IN (\n"
                                     "SELECT id FROM screenshots_fts_v5\n"
                                     "WHERE screenshots_fts_v5 MATCH ?\n"
                                     ")\n"
                                     ")";

qsizetype wordCount(const QString& text)
{
    qsizetype count = 0;
    bool isInWord = false;
    for (const QChar unit : text) {
        const bool isOfWord = unit.isLetterOrNumber() || unit.isSurrogate();
        count += isOfWord && !isInWord ? 1 : 0;
        isInWord = isOfWord;
    }
    return count;
}

void addTexts(ListConditions& conditions, const SearchQuery& query)
{
    for (const QString& keyword : query.keywords) {
        conditions.add(kKeywordCondition);
        const QString pattern = likePattern(keyword);
        for (int i = 0; i < kPatternsOfKeyword; ++i)
            conditions.bindings.append(pattern);
        conditions.bindings.append(fullTextQuery(keyword));
    }
    if (query.appName)
        conditions.add("s.source_app_name LIKE ? COLLATE NOCASE", likePattern(*query.appName));
    if (query.tagName)
        conditions.add("s.tags_json LIKE ? COLLATE NOCASE", likePattern(*query.tagName));
}

void addScope(ListConditions& conditions, const ListRequest& request)
{
    constexpr int kDaysOfWeek = 7;
    constexpr int kDaysOfMonth = 30;
    conditions.add(request.scope == ScreenshotScope::Trash ? "s.is_deleted = 1" : "s.is_deleted = 0");
    const auto addSince = [&](Date since) { conditions.add("s.captured_at >= ?", sqliteValue(since)); };
    const Calendar& calendar = request.calendar;
    switch (request.scope) {
    case ScreenshotScope::All:
    case ScreenshotScope::Trash:
        return;
    case ScreenshotScope::RecentlyUsed:
        return conditions.add("s.last_used_at IS NOT NULL");
    case ScreenshotScope::Today:
        return addSince(calendar.startOfDay(request.now));
    case ScreenshotScope::Last7Days:
        return addSince(calendar.addingDays(request.now, -kDaysOfWeek));
    case ScreenshotScope::Last30Days:
        return addSince(calendar.addingDays(request.now, -kDaysOfMonth));
    case ScreenshotScope::Favorites:
        return conditions.add("s.is_favorite = 1");
    case ScreenshotScope::Landscape:
        return conditions.add("s.pixel_width > s.pixel_height");
    case ScreenshotScope::Portrait:
        return conditions.add("s.pixel_height >= s.pixel_width");
    case ScreenshotScope::LargeImages:
        return conditions.add("(s.pixel_width * s.pixel_height >= 12000000 OR s.file_size >= 10485760)");
    case ScreenshotScope::Images:
        return conditions.add("s.content_type = 0");
    case ScreenshotScope::TextItems:
        return conditions.add("s.content_type = 1");
    }
}

/// All of them. SQLite refuses a chain of some thousand, as a pasted page of text gives; then groups of them
/// are chained.
QByteArray conjunction(const QByteArrayList& conditions)
{
    constexpr qsizetype kLongestChain = 500;
    const QByteArray separator = " AND ";
    if (conditions.size() <= kLongestChain)
        return conditions.join(separator);
    QByteArrayList groups;
    for (qsizetype start = 0; start < conditions.size(); start += kLongestChain)
        groups.append('(' + conditions.mid(start, kLongestChain).join(separator) + ')');
    return conjunction(groups);
}

} // namespace

QString likePattern(const QString& text)
{
    return u'%' + text + u'%';
}

/// Where SQLite would refuse it, and the page with it, or take minutes,
/// the phrase without words finds nothing, and the texts themselves decide: for asterisks
/// only, and for words by the hundred with punctuation between them. A NUL would end the query within its
/// quotes; a space separates words as a NUL in a text does.
QString fullTextQuery(QString keyword)
{
    constexpr qsizetype kLongestPhrase = 200; // words
    const QString expression = ftsExpression({keyword.replace(QChar(u'\0'), u' ')});
    if (expression.isEmpty() || wordCount(expression) > kLongestPhrase)
        return QStringLiteral("\"\"");
    return expression;
}

ListConditions rangeConditions(const SearchQuery& query, const ListRequest& request)
{
    ListConditions conditions;
    if (query.before)
        conditions.add("s.captured_at < ?", sqliteValue(*query.before));
    if (query.after)
        conditions.add("s.captured_at >= ?", sqliteValue(*query.after));
    if (query.favoritesOnly)
        conditions.add("s.is_favorite = 1");
    addScope(conditions, request);
    return conditions;
}

QByteArray orderText(ScreenshotSort sort)
{
    switch (sort) {
    case ScreenshotSort::Relevance:
    case ScreenshotSort::Newest:
        return "s.is_pinned DESC, s.captured_at DESC";
    case ScreenshotSort::Oldest:
        return "s.is_pinned DESC, s.captured_at ASC";
    case ScreenshotSort::RecentlyUsed:
        return "s.is_pinned DESC, s.last_used_at IS NULL, s.last_used_at DESC, s.captured_at DESC";
    case ScreenshotSort::FileSize:
        return "s.is_pinned DESC, s.file_size DESC, s.captured_at DESC";
    }
    Q_UNREACHABLE();
}

ListQuery listQuery(const ListRequest& request)
{
    const SearchQuery query = SearchQueryParser::parse(request.rawQuery, request.calendar);
    if (query.keywords.size() > kMostKeywords)
        throw StoreError(StoreError::Case::Prepare, QStringLiteral("too many words"));
    ListConditions conditions;
    addTexts(conditions, query);
    const ListConditions ranges = rangeConditions(query, request);
    conditions.texts += ranges.texts;
    conditions.bindings += ranges.bindings;
    const QByteArray sql = "SELECT " + columnList(kProjectionColumns, "s.") + "\nFROM screenshots s\nWHERE " +
                           conjunction(conditions.texts) + "\nORDER BY " + orderText(request.sort) +
                           "\nLIMIT ? OFFSET ?";
    conditions.bindings.append(static_cast<qint64>(request.limit));
    conditions.bindings.append(static_cast<qint64>(request.offset));
    return {sql, conditions.bindings};
}

} // namespace tessary
