#include "search/SearchQueryParser.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tessary {
namespace {

const Calendar kShanghai{QTimeZone("Asia/Shanghai")};

SearchQuery parsed(const QString& text)
{
    return SearchQueryParser::parse(text, kShanghai);
}

Date instant(const char* isoText)
{
    return Date::fromDateTime(QDateTime::fromString(QLatin1String(isoText), Qt::ISODate));
}

SearchQuery keywords(const QStringList& words)
{
    SearchQuery query;
    query.keywords = words;
    return query;
}

TEST(SearchQueryParserTest, BlankTextAsksForNothing)
{
    for (const QString& text : {QString(), QStringLiteral(" "), QStringLiteral("\t\n \r\n"),
                                QStringLiteral("\u3000\u00A0\u2029\u0085")})
        EXPECT_EQ(parsed(text), SearchQuery()) << qPrintable(text);
}

TEST(SearchQueryParserTest, WordsKeepTheirOrderLetterCaseAndPunctuation)
{
    EXPECT_EQ(parsed(QStringLiteral("  -Foo \"two words\"  bar* 50% a_b\n中文 ")),
              keywords({QStringLiteral("-Foo"), QStringLiteral("\"two"), QStringLiteral("words\""),
                        QStringLiteral("bar*"), QStringLiteral("50%"), QStringLiteral("a_b"),
                        QStringLiteral("中文")}));
}

TEST(SearchQueryParserTest, AnOperatorLeavesTheWordsAroundIt)
{
    SearchQuery expected = keywords({QStringLiteral("foo"), QStringLiteral("bar")});
    expected.appName = QStringLiteral("Mail");
    EXPECT_EQ(parsed(QStringLiteral("foo app:Mail bar")), expected);
}

TEST(SearchQueryParserTest, ATagEndsAtASpace)
{
    SearchQuery expected = keywords({QStringLiteral("report")});
    expected.tagName = QStringLiteral("work");
    EXPECT_EQ(parsed(QStringLiteral("tag:work report")), expected);
}

TEST(SearchQueryParserTest, AQuotedNameKeepsItsSpacesAndLosesItsQuotes)
{
    SearchQuery expected = keywords({QStringLiteral("x")});
    expected.appName = QStringLiteral("Text Editor");
    EXPECT_EQ(parsed(QStringLiteral("app:\"Text Editor\" x")), expected);
    expected.appName = QStringLiteral("Text\nEditor");
    EXPECT_EQ(parsed(QStringLiteral("app:\"Text\nEditor\" x")), expected);
}

TEST(SearchQueryParserTest, QuotesThatDoNotPairAreTrimmedFromTheWord)
{
    SearchQuery expected = keywords({QStringLiteral("Editor")});
    expected.appName = QStringLiteral("Text");
    EXPECT_EQ(parsed(QStringLiteral("app:\"Text Editor")), expected);
    EXPECT_EQ(parsed(QStringLiteral("app:Text\" Editor")), expected);
    EXPECT_EQ(parsed(QStringLiteral("app:\"\"")).appName, QString());
    EXPECT_EQ(parsed(QStringLiteral("app:a\"b")).appName, QStringLiteral("a\"b"));
}

TEST(SearchQueryParserTest, KeysAreRecognisedInAnyLetterCaseAndValuesKeptAsTyped)
{
    EXPECT_EQ(parsed(QStringLiteral("APP:Safari")).appName, QStringLiteral("Safari"));
    EXPECT_EQ(parsed(QStringLiteral("TaG:WoRk")).tagName, QStringLiteral("WoRk"));
    EXPECT_TRUE(parsed(QStringLiteral("Is:FAVORITE")).favoritesOnly);
    EXPECT_TRUE(parsed(QStringLiteral("is:\"favorite\"")).favoritesOnly);
}

TEST(SearchQueryParserTest, DatesAreMidnightsOfTheCalendar)
{
    SearchQuery expected;
    expected.before = instant("2024-05-01T00:00:00+08:00");
    expected.after = instant("2024-04-01T00:00:00+08:00");
    EXPECT_EQ(parsed(QStringLiteral("after:2024-04-01 before:2024-05-01")), expected);
}

TEST(SearchQueryParserTest, AValueThatMeansNothingIsRemovedAndSetsNothing)
{
    EXPECT_EQ(parsed(QStringLiteral("is:favourite")), SearchQuery());
    EXPECT_EQ(parsed(QStringLiteral("before:2024-13-01")), SearchQuery());
    EXPECT_EQ(parsed(QStringLiteral("after:yesterday before:2024-5-1")), SearchQuery());
}

TEST(SearchQueryParserTest, TheLastOfAKindDecides)
{
    EXPECT_EQ(parsed(QStringLiteral("app:a app:b")).appName, QStringLiteral("b"));
    EXPECT_EQ(parsed(QStringLiteral("before:2024-05-01 before:soon")).before, std::nullopt);
    EXPECT_TRUE(parsed(QStringLiteral("is:favorite is:other")).favoritesOnly);
}

TEST(SearchQueryParserTest, AKeyWithoutItsValueIsAWord)
{
    EXPECT_EQ(parsed(QStringLiteral("app:")), keywords({QStringLiteral("app:")}));
    EXPECT_EQ(parsed(QStringLiteral("app: Mail")),
              keywords({QStringLiteral("app:"), QStringLiteral("Mail")}));
    EXPECT_EQ(parsed(QStringLiteral("app :Mail")),
              keywords({QStringLiteral("app"), QStringLiteral(":Mail")}));
    EXPECT_EQ(parsed(QStringLiteral("note:x")), keywords({QStringLiteral("note:x")}));
}

TEST(SearchQueryParserTest, AnOperatorWithinAWordCountsAndTheRestClosesUp)
{
    SearchQuery expected = keywords({QStringLiteral("fooend")});
    expected.tagName = QStringLiteral("a b");
    EXPECT_EQ(parsed(QStringLiteral("footag:\"a b\"end")), expected);
}

TEST(SearchQueryParserTest, TheIdeographicSpaceSeparatesEndsAValueAndIsTrimmed)
{
    SearchQuery expected = keywords({QStringLiteral("会议"), QStringLiteral("纪要")});
    expected.appName = QStringLiteral("备忘录");
    EXPECT_EQ(parsed(QStringLiteral("\u3000会议\u3000app:备忘录\u3000纪要\u3000")), expected);
    EXPECT_EQ(parsed(QStringLiteral("app:\u3000x")), keywords({QStringLiteral("app:"), QStringLiteral("x")}));
    EXPECT_EQ(parsed(QStringLiteral("a\u00A0b\u2003c\u2028d")).keywords.size(), 4);
}

TEST(SearchQueryParserTest, ANulIsACharacterLikeAnyOther)
{
    const QString word = QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b");
    SearchQuery expected = keywords({word});
    expected.appName = word;
    EXPECT_EQ(parsed(word + QStringLiteral(" app:") + word), expected);
}

TEST(SearchQueryParserTest, HalfASurrogatePairDoesNotHideAnOperator)
{
    const SearchQuery query = parsed(QString(QChar(0xD83D)) + QStringLiteral(" app:Mail x"));
    EXPECT_EQ(query.appName, QStringLiteral("Mail"));
    EXPECT_EQ(query.keywords.size(), 2);
    EXPECT_EQ(parsed(QStringLiteral("tag:😀 😀")).tagName, QStringLiteral("😀"));
}

/// Looks in vain for a superlinear time: each text has two million units.
TEST(SearchQueryParserTest, HugeTextsAreTakenApartInTime)
{
    constexpr int kUnits = 2'000'000;
    const QString word(kUnits, u'x');
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(parsed(word), keywords({word}));
    EXPECT_EQ(parsed(QStringLiteral("app:") + word).appName, word);
    EXPECT_EQ(parsed(QStringLiteral("app:\"") + word + u'"').appName, word);
    EXPECT_EQ(parsed(QStringLiteral("app:\"") + word).appName, word);
    EXPECT_EQ(parsed(QString(kUnits, u'"')).keywords.size(), 1);
    EXPECT_EQ(parsed(QString(kUnits, u' ')), SearchQuery());
    EXPECT_EQ(parsed(QStringLiteral("a ").repeated(kUnits / 2)).keywords.size(), kUnits / 2);
    EXPECT_EQ(parsed(QStringLiteral("app:a ").repeated(kUnits / 6)).keywords, QStringList());
    EXPECT_EQ(parsed(QStringLiteral("app:\"").repeated(kUnits / 5)).keywords, QStringList());
    EXPECT_EQ(parsed(QStringLiteral("app:").repeated(kUnits / 4)).keywords, QStringList());
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(30));
}

} // namespace
} // namespace tessary
