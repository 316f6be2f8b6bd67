#include "store/ListQuery.h"

#include "store/FtsExpression.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr char kColumns[] =
    "s.id, s.content_hash, s.filename, s.original_path, s.library_path, s.thumbnail_path, s.captured_at, "
    "s.imported_at, s.pixel_width, s.pixel_height, s.file_size, s.source_app_name, s.source_bundle_id, "
    "s.source_app_icon_path, s.ocr_text, s.ocr_status, s.tags_json, s.note, s.is_favorite, s.last_used_at, "
    "s.is_deleted, s.deleted_at, s.file_type, s.generated_title, s.is_pinned, s.duplicate_count, "
    "s.content_type, s.content_text";

constexpr char kKeyword[] = R"((
s.source_app_name LIKE ? COLLATE NOCASE OR
s.tags_json LIKE ? COLLATE NOCASE OR
s.note LIKE ? COLLATE NOCASE OR
s.filename LIKE ? COLLATE NOCASE OR
s.content_text LIKE ? COLLATE NOCASE OR
s.ocr_text LIKE ? COLLATE NOCASE OR
s.generated_title LIKE ? COLLATE NOCASE OR
s.id IN (
SELECT id FROM screenshots_fts_v5
WHERE screenshots_fts_v5 MATCH ?
)
))";

ListRequest request(const QString& text)
{
    ListRequest request;
    request.rawQuery = text;
    request.calendar = Calendar{QTimeZone("Asia/Shanghai")};
    request.now = Date{1'714'561'200.5}; // 2024-05-01 19:00:00.5 in Shanghai
    return request;
}

QList<SQLiteValue> patterns(const QString& keyword, const QString& expression)
{
    QList<SQLiteValue> values(7, u'%' + keyword + u'%');
    values.append(expression);
    return values;
}

TEST(ListQueryTest, AnEmptyQueryListsTheScopeInItsOrder)
{
    const ListQuery query = listQuery(request(QString()));
    EXPECT_EQ(query.sql, QByteArray("SELECT ") + kColumns +
                             "\nFROM screenshots s\nWHERE s.is_deleted = 0"
                             "\nORDER BY s.is_pinned DESC, s.captured_at DESC\nLIMIT ? OFFSET ?");
    EXPECT_EQ(query.bindings, (QList<SQLiteValue>{qint64{100}, qint64{0}}));
}

TEST(ListQueryTest, EveryPartOfAQueryHasItsPlace)
{
    ListRequest full = request(QStringLiteral(
        "is:favorite after:2024-04-01 b\"c% before:2024-05-01 tag:work app:\"Text Editor\" 会*"));
    full.scope = ScreenshotScope::Last7Days;
    full.sort = ScreenshotSort::RecentlyUsed;
    full.limit = 101;
    full.offset = 200;
    const ListQuery query = listQuery(full);
    EXPECT_EQ(query.sql, QByteArray("SELECT ") + kColumns + "\nFROM screenshots s\nWHERE " + kKeyword +
                             " AND " + kKeyword +
                             " AND s.source_app_name LIKE ? COLLATE NOCASE"
                             " AND s.tags_json LIKE ? COLLATE NOCASE"
                             " AND s.captured_at < ? AND s.captured_at >= ? AND s.is_favorite = 1"
                             " AND s.is_deleted = 0 AND s.captured_at >= ?"
                             "\nORDER BY s.is_pinned DESC, s.last_used_at IS NULL, s.last_used_at DESC, "
                             "s.captured_at DESC\nLIMIT ? OFFSET ?");
    QList<SQLiteValue> expected = patterns(QStringLiteral("b\"c%"), QStringLiteral("\"b\"\"c%\"*"));
    expected += patterns(QStringLiteral("会*"), QStringLiteral("\"会\"*"));
    expected += {QStringLiteral("%Text Editor%"),
                 QStringLiteral("%work%"),
                 1'714'492'800.0,
                 1'711'900'800.0,
                 1'714'561'200.5 - 7 * 86400,
                 qint64{101},
                 qint64{200}};
    EXPECT_EQ(query.bindings, expected);
}

TEST(ListQueryTest, EachScopeHasItsConditions)
{
    const double now = 1'714'561'200.5;
    const std::array<std::pair<const char*, std::optional<double>>, kScreenshotScopes.size()> expected{{
        {"s.is_deleted = 0", std::nullopt},
        {"s.is_deleted = 0 AND s.last_used_at IS NOT NULL", std::nullopt},
        {"s.is_deleted = 0 AND s.captured_at >= ?", 1'714'492'800.0},
        {"s.is_deleted = 0 AND s.captured_at >= ?", now - 7 * 86400},
        {"s.is_deleted = 0 AND s.captured_at >= ?", now - 30 * 86400},
        {"s.is_deleted = 0 AND s.is_favorite = 1", std::nullopt},
        {"s.is_deleted = 0 AND s.pixel_width > s.pixel_height", std::nullopt},
        {"s.is_deleted = 0 AND s.pixel_height >= s.pixel_width", std::nullopt},
        {"s.is_deleted = 0 AND (s.pixel_width * s.pixel_height >= 12000000 OR s.file_size >= 10485760)",
         std::nullopt},
        {"s.is_deleted = 0 AND s.content_type = 0", std::nullopt},
        {"s.is_deleted = 0 AND s.content_type = 1", std::nullopt},
        {"s.is_deleted = 1", std::nullopt},
    }};
    for (size_t i = 0; i < kScreenshotScopes.size(); ++i) {
        ListRequest scoped = request(QString());
        scoped.scope = kScreenshotScopes.at(i);
        const ListQuery query = listQuery(scoped);
        EXPECT_TRUE(query.sql.contains(QByteArray("\nWHERE ") + expected.at(i).first + "\nORDER BY "))
            << query.sql.constData();
        EXPECT_EQ(query.bindings.size(), expected.at(i).second ? 3 : 2);
        if (expected.at(i).second) {
            EXPECT_EQ(query.bindings.first(), SQLiteValue(*expected.at(i).second));
        }
    }
}

TEST(ListQueryTest, EachSortHasItsOrder)
{
    const std::array<const char*, kScreenshotSorts.size()> expected{
        "s.is_pinned DESC, s.captured_at DESC", "s.is_pinned DESC, s.captured_at DESC",
        "s.is_pinned DESC, s.captured_at ASC",
        "s.is_pinned DESC, s.last_used_at IS NULL, s.last_used_at DESC, s.captured_at DESC",
        "s.is_pinned DESC, s.file_size DESC, s.captured_at DESC"};
    for (size_t i = 0; i < kScreenshotSorts.size(); ++i) {
        ListRequest sorted = request(QString());
        sorted.sort = kScreenshotSorts.at(i);
        EXPECT_TRUE(listQuery(sorted).sql.endsWith(QByteArray("\nORDER BY ") + expected.at(i) +
                                                   "\nLIMIT ? OFFSET ?"));
    }
}

TEST(ListQueryTest, AKeywordThatSQLiteCannotTakeAsksForAPhraseWithoutWords)
{
    EXPECT_EQ(listQuery(request(QStringLiteral("***"))).bindings.at(7), SQLiteValue(QStringLiteral("\"\"")));
    const QString withNul = QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b");
    EXPECT_EQ(listQuery(request(withNul)).bindings.at(7), SQLiteValue(QStringLiteral("\"a b\"*")));
    EXPECT_EQ(listQuery(request(withNul)).bindings.at(0), SQLiteValue(u'%' + withNul + u'%'));
    const QString list = QStringLiteral("a,").repeated(200);
    EXPECT_EQ(listQuery(request(list)).bindings.at(7), SQLiteValue(u'"' + list + QStringLiteral("\"*")));
    EXPECT_EQ(listQuery(request(list + u'b')).bindings.at(7), SQLiteValue(QStringLiteral("\"\"")));
}

TEST(FtsExpressionTest, QuotesEachTermAsAPrefixAndJoinsThem)
{
    EXPECT_EQ(ftsExpression({QStringLiteral("ab")}), QStringLiteral("\"ab\"*"));
    EXPECT_EQ(ftsExpression({QStringLiteral("say \"hi\""), QStringLiteral("a*b*"), QStringLiteral("**")}),
              QStringLiteral("\"say \"\"hi\"\"\"* AND \"ab\"*"));
    EXPECT_EQ(ftsExpression({QStringLiteral("*")}), QString());
    EXPECT_EQ(ftsExpression({}), QString());
}

} // namespace
} // namespace tessary
