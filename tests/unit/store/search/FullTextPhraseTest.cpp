#include "store/search/FullTextPhrase.h"

#include "store/ListQuery.h"
#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

class FullTextPhraseTest : public ::testing::Test {
protected:
    bool isIn(const QString& keyword, const QByteArray& text) const
    {
        return FullTextPhrase(fullTextQuery(keyword), tokenizer).isIn(text, tokenizer);
    }

    SQLiteConnection connection{QStringLiteral(":memory:")};
    FullTextTokenizer tokenizer{connection.handle()};
};

TEST_F(FullTextPhraseTest, ItsLastWordMayGoOn)
{
    EXPECT_TRUE(isIn(QStringLiteral("zhong"), "shang hai zhongguo"));
    EXPECT_FALSE(isIn(QStringLiteral("guo"), "zhongguo"));
    EXPECT_TRUE(isIn(QStringLiteral("foo-ba"), "a foo/bar"));
    EXPECT_FALSE(isIn(QStringLiteral("fo-bar"), "a foo/bar"));
}

TEST_F(FullTextPhraseTest, ItsWordsStandSideBySide)
{
    EXPECT_FALSE(isIn(QStringLiteral("a-c"), "a b c"));
    EXPECT_TRUE(isIn(QStringLiteral("a-a-b"), "a a a b"));
}

TEST_F(FullTextPhraseTest, CaseAndAccentsDoNotCount)
{
    EXPECT_TRUE(isIn(QStringLiteral("ÉCOLE"), "une ecole"));
    EXPECT_TRUE(isIn(QStringLiteral("ecole"), "une École"));
}

TEST_F(FullTextPhraseTest, WithoutWordsItIsNowhere)
{
    EXPECT_FALSE(isIn(QStringLiteral("***"), "text"));
    EXPECT_FALSE(isIn(QStringLiteral("..."), "text"));
    EXPECT_FALSE(isIn(QStringLiteral("\""), "\""));
    EXPECT_FALSE(isIn(QStringLiteral("text"), ""));
}

TEST_F(FullTextPhraseTest, QuotesAndNulsSeparateWords)
{
    EXPECT_TRUE(isIn(QStringLiteral("say\"hel"), "say hello"));
    EXPECT_TRUE(isIn(QStringLiteral("say") + QChar(u'\0') + QStringLiteral("hel"), "say hello"));
    EXPECT_TRUE(isIn(QStringLiteral("hel"), QByteArray("say\0hello", 9)));
}

} // namespace
} // namespace tessary
