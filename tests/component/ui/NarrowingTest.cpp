#include "ui/quicksearch/Narrowing.h"

#include "search/SearchQueryParser.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

const Calendar kUtc{QTimeZone::utc()};

QStringList texts(const QString& query, ScreenshotScope scope = ScreenshotScope::All)
{
    QStringList texts;
    for (const Narrowing& narrowing : narrowings(query, scope, kUtc))
        texts.append(narrowing.text);
    return texts;
}

TEST(NarrowingTest, KeywordsDoNotNarrow)
{
    EXPECT_TRUE(texts(QStringLiteral("foo bar app:")).isEmpty());
}

TEST(NarrowingTest, EveryOperatorIsSaid)
{
    const QString query =
        QStringLiteral("app:\"Text Editor\" x tag:工作 before:2024-05-01 after:2024-04-01 is:favorite");
    const QStringList expected{QStringLiteral("来源 App：Text Editor"), QStringLiteral("标签：工作"),
                               QStringLiteral("早于 2024-05-01"), QStringLiteral("自 2024-04-01 起"),
                               QStringLiteral("收藏")};
    EXPECT_EQ(texts(query), expected);
}

TEST(NarrowingTest, AScopeOtherThanAllComesFirst)
{
    const QStringList expected{QStringLiteral("最近 7 天"), QStringLiteral("标签：a")};
    EXPECT_EQ(texts(QStringLiteral("tag:a"), ScreenshotScope::Last7Days), expected);
}

TEST(NarrowingTest, AnOperatorThatIsIgnoredDoesNotNarrow)
{
    EXPECT_TRUE(texts(QStringLiteral("before:2024-13-01 is:favourite")).isEmpty());
}

TEST(NarrowingTest, RemovingOneLeavesTheRestOfTheText)
{
    using SearchQueryParser::removingOperator;
    const QString query = QStringLiteral("foo APP:Mail bar app:\"a b\" tag:x");
    EXPECT_EQ(removingOperator(query, QStringLiteral("app")), QStringLiteral("foo bar tag:x"));
    EXPECT_EQ(removingOperator(query, QStringLiteral("tag")), QStringLiteral("foo APP:Mail bar app:\"a b\""));
    EXPECT_EQ(removingOperator(query, QStringLiteral("is")), query);
    EXPECT_EQ(removingOperator(QStringLiteral("is:favorite"), QStringLiteral("is")), QString());
}

} // namespace
} // namespace tessary
