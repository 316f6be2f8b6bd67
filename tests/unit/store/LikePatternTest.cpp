#include "store/sqlite/LikePattern.h"

#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <random>

namespace tessary {
namespace {

bool matches(QByteArrayView pattern, QByteArrayView text)
{
    return LikePattern(pattern).matches(text);
}

TEST(LikePatternTest, FindsTextAnywhereInEitherCaseOfAsciiLetters)
{
    EXPECT_TRUE(matches("%mail%", "Apple MAIL x"));
    EXPECT_TRUE(matches("%MaIl%", "mail"));
    EXPECT_TRUE(matches("%会议%", "下午会议"));
    EXPECT_FALSE(matches("%mail%", "mai l"));
    EXPECT_FALSE(matches("%É%", "é"));
    EXPECT_TRUE(matches("%%", ""));
    EXPECT_FALSE(matches("%a%", ""));
}

TEST(LikePatternTest, PercentAndUnderscoreKeepTheirMeaning)
{
    EXPECT_TRUE(matches("%5_%%", "50"));
    EXPECT_TRUE(matches("a_c", "a会c"));
    EXPECT_FALSE(matches("a_c", "ac"));
    EXPECT_TRUE(matches("%a%b%", "xaxxb"));
    EXPECT_FALSE(matches("%a%b%", "xbxxa"));
    EXPECT_TRUE(matches("abc", "ABC"));
    EXPECT_FALSE(matches("abc", "abcd"));
    EXPECT_TRUE(matches("ab%", "abcd"));
    EXPECT_FALSE(matches("%ab", "abc"));
}

TEST(LikePatternTest, ANulIsACharacterLikeAnyOther)
{
    const QByteArray text("one\0two", 7);
    EXPECT_TRUE(matches(QByteArrayView("%e\0t%", 5), text));
    EXPECT_TRUE(matches("%two%", text));
    EXPECT_FALSE(matches(QByteArrayView("%e\0x%", 5), text));
}

TEST(LikePatternTest, AnswersWhatSQLiteAnswersForRandomTextsAndPatterns)
{
    // As it comes from the library, without ours.
    SQLiteConnection connection(QStringLiteral(":memory:"));
    constexpr unsigned kSeed = 7;
    constexpr int kRounds = 20'000;
    static const std::array pieces{QStringLiteral("a"), QStringLiteral("B"),  QStringLiteral("b"),
                                   QStringLiteral("A"), QStringLiteral("会"), QStringLiteral("é"),
                                   QStringLiteral(" "), QStringLiteral("😀"),  QStringLiteral("["),
                                   QStringLiteral("{"), QStringLiteral("%"),  QStringLiteral("_")};
    std::mt19937 random(kSeed);
    const auto text = [&random](size_t longest, size_t kinds) {
        QString made;
        for (size_t i = random() % (longest + 1); i > 0; --i)
            made += pieces.at(random() % kinds);
        return made;
    };
    for (int i = 0; i < kRounds; ++i) {
        const QString value = text(12, pieces.size());
        const bool isPlain = i % 2 == 0;
        const QString pattern = isPlain ? u'%' + text(4, pieces.size() - 2) + u'%' : text(6, pieces.size());
        const bool expected = connection.integerResult("SELECT ? LIKE ?", {value, pattern}) != 0;
        ASSERT_EQ(matches(pattern.toUtf8(), value.toUtf8()), expected)
            << qPrintable(value) << " LIKE " << qPrintable(pattern);
    }
}

TEST(LikePatternTest, RepetitiveTextsTakeNoUnreasonableTime)
{
    constexpr qsizetype kText = 4'000'000;
    constexpr qsizetype kNeedle = 1'000'000;
    const QByteArray text(kText, 'a');
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_FALSE(matches('%' + QByteArray(kNeedle, 'a') + "b%", text));
    EXPECT_TRUE(matches('%' + QByteArray(kNeedle, 'A') + '%', text));
    EXPECT_FALSE(matches("%aaaaaaaaaaaaaaab%", text));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(20));
}

} // namespace
} // namespace tessary
