#include "app/commandline/SearchOptions.h"

#include "app/commandline/ExitStatus.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(SearchOptionsTest, GoOnWhereTheLastPageEnded)
{
    SearchOptions options = SearchOptions::from({{"limit", "700"}, {"offset", "10"}, {"sort", "oldest"}});
    options.advance(500);
    EXPECT_EQ(options.remaining(), 200);
    EXPECT_EQ(options.asked().value(QStringLiteral("offset")).toInt(), 510);
    EXPECT_EQ(options.asked().value(QStringLiteral("limit")).toInt(), 200);
    EXPECT_EQ(options.asked().value(QStringLiteral("sort")).toString(), QStringLiteral("oldest"));
    EXPECT_FALSE(options.asked().contains(QStringLiteral("scope")));
}

TEST(SearchOptionsTest, RefuseWhatIsNoNumberAndNoName)
{
    const QList<QHash<QByteArray, QByteArray>> wrong{
        {{"limit", "x"}}, {{"limit", "-1"}}, {{"offset", ""}}, {{"scope", "Trash"}}, {{"sort", "size"}}};
    for (const auto& options : wrong) {
        try {
            (void)SearchOptions::from(options);
            FAIL() << options.keys().first().constData();
        } catch (const CommandError& error) {
            EXPECT_EQ(error.status(), ExitStatus::WrongUse);
        }
    }
}

} // namespace
} // namespace tessary
