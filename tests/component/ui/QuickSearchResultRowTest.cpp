#include "ui/quicksearch/QuickSearchResultRow.h"

#include "tests/support/RecordSamples.h"
#include "ui/kit/Theme.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QString age(double secondsAgo)
{
    constexpr double kNow = 1'800'000'000;
    return QuickSearchResultRow::relativeMinuteText(Date{kNow - secondsAgo}, Date{kNow});
}

TEST(RelativeMinuteTextTest, LessThanAMinuteAndTheFutureAreJustNow)
{
    EXPECT_EQ(age(0), QStringLiteral("刚刚"));
    EXPECT_EQ(age(59.9), QStringLiteral("刚刚"));
    EXPECT_EQ(age(-5'000), QStringLiteral("刚刚"));
}

TEST(RelativeMinuteTextTest, AnHourIsToldInMinutes)
{
    EXPECT_EQ(age(60), QStringLiteral("1 分钟前"));
    EXPECT_EQ(age(3'599), QStringLiteral("59 分钟前"));
    EXPECT_EQ(age(3'600), QStringLiteral("60 分钟前"));
    EXPECT_EQ(age(7'500), QStringLiteral("125 分钟前"));
    EXPECT_EQ(age(86'399), QStringLiteral("1439 分钟前"));
}

TEST(RelativeMinuteTextTest, FromADayOnDaysAreTold)
{
    EXPECT_EQ(age(86'400), QStringLiteral("1 天前"));
    EXPECT_EQ(age(10 * 86'400.0 + 5), QStringLiteral("10 天前"));
}

TEST(RelativeMinuteTextTest, AClockThatIsVeryWrongIsNoCrash)
{
    EXPECT_FALSE(age(1e300).isEmpty());
    EXPECT_EQ(age(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("刚刚"));
}

class RowTitleTest : public ::testing::Test {
protected:
    ShownTitle shown(const QString& text, const QStringList& keywords = {}, double width = 240) const
    {
        return shownTitle(testing::textRecord(text), keywords, normal, bold, width);
    }

    Theme theme;
    QFont normal = theme.font(Theme::kBodySize);
    QFont bold = theme.font(Theme::kBodySize, QFont::DemiBold);
};

TEST_F(RowTitleTest, APicturesNameHasNoExtension)
{
    ScreenshotRecord record;
    record.filename = QStringLiteral("截屏 2026.01.02.png");
    EXPECT_EQ(rowTitle(record), QStringLiteral("截屏 2026.01.02"));
    record.filename = QStringLiteral(".png");
    EXPECT_EQ(rowTitle(record), QStringLiteral(".png"));
}

TEST_F(RowTitleTest, ControlCharactersAndTabsAreBlanks)
{
    EXPECT_EQ(rowTitle(testing::textRecord(QStringLiteral("a\tb\x1b[1mc"))), QStringLiteral("a b [1mc"));
}

TEST_F(RowTitleTest, EveryMatchIsEmphasisedInAnyLetterCase)
{
    const ShownTitle title = shown(QStringLiteral("Report and report"), {QStringLiteral("REPORT")});
    ASSERT_EQ(title.emphasis.size(), 2);
    EXPECT_EQ(title.emphasis.at(0).start, 0);
    EXPECT_EQ(title.emphasis.at(1).start, 11);
    EXPECT_EQ(title.emphasis.at(1).length, 6);
}

TEST_F(RowTitleTest, ALongTextIsCutAtItsEndToFit)
{
    for (const QString& piece :
         {QStringLiteral("周会纪要"), QStringLiteral("wide text "), QStringLiteral("😀")}) {
        const ShownTitle title = shown(piece.repeated(2'500), {piece.left(2)});
        EXPECT_TRUE(title.text.endsWith(QChar(0x2026))) << piece.toStdString();
        EXPECT_TRUE(title.text.isValidUtf16());
        EXPECT_LE(QFontMetricsF(normal).horizontalAdvance(title.text), 240);
        EXPECT_GT(QFontMetricsF(bold).horizontalAdvance(title.text), 120);
        for (const auto& range : title.emphasis)
            EXPECT_LE(range.start + range.length, title.text.size());
    }
}

TEST_F(RowTitleTest, ATextThatFitsIsWhole)
{
    EXPECT_EQ(shown(QStringLiteral("short")).text, QStringLiteral("short"));
    EXPECT_EQ(shown(QString()).text, QString());
}

TEST_F(RowTitleTest, ARightToLeftTextFits)
{
    const ShownTitle title = shown(QStringLiteral("שלום עולם ").repeated(100), {QStringLiteral("עולם")});
    EXPECT_LE(QFontMetricsF(bold).horizontalAdvance(title.text), 240);
    EXPECT_FALSE(title.emphasis.isEmpty());
}

TEST_F(RowTitleTest, ALongFileNameIsCutInTheMiddle)
{
    ScreenshotRecord record;
    record.filename = QStringLiteral("a very long name of a screenshot that nobody reads to its end.png");
    const ShownTitle title = shownTitle(record, {}, normal, bold, 160);
    EXPECT_TRUE(title.text.startsWith(QLatin1Char('a')));
    EXPECT_TRUE(title.text.endsWith(QStringLiteral("end")));
}

} // namespace
} // namespace tessary
