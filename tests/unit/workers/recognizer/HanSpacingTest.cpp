#include "workers/recognizer/HanSpacing.h"
#include "tests/unit/workers/recognizer/Readings.h"

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

using testing::readingOf;

/// What stands before that character gets a gap of that part of the line's height.
LineReading withGap(LineReading reading, qsizetype index, double gap)
{
    reading[index].gapBefore = gap;
    return reading;
}

TEST(HanSpacingTest, DropsTheEnginesBlanksBetweenHanCharacters)
{
    EXPECT_EQ(textOf(readingOf(QStringLiteral("系 统 设 置"))), QStringLiteral("系统设置"));
}

TEST(HanSpacingTest, KeepsRealBlanksBetweenHanAndLatin)
{
    EXPECT_EQ(textOf(readingOf(QStringLiteral("安装 Linux 内核"))), QStringLiteral("安装 Linux 内核"));
}

TEST(HanSpacingTest, DropsBlanksBesideLatinThatThePictureDoesNotShow)
{
    LineReading reading = readingOf(QStringLiteral("安装 a 内"));
    reading = withGap(withGap(reading, 2, 0.12), 3, 0.12);
    EXPECT_EQ(textOf(reading), QStringLiteral("安装a内"));
}

TEST(HanSpacingTest, SeesBlanksBesideLatinThatTheEngineDoesNot)
{
    EXPECT_EQ(textOf(withGap(readingOf(QStringLiteral("安装b")), 2, 0.4)), QStringLiteral("安装 b"));
}

TEST(HanSpacingTest, TerminalsSetHanCharactersApart)
{
    LineReading reading = readingOf(QStringLiteral("打 印 行 程 单 与 发 票"));
    for (qsizetype i = 1; i < reading.size(); ++i)
        reading[i].gapBefore = 0.52;
    EXPECT_EQ(textOf(reading), QStringLiteral("打印行程单与发票"));
    EXPECT_EQ(textOf(withGap(reading, 4, 1.1)), QStringLiteral("打印行程 单与发票"));
}

TEST(HanSpacingTest, TheBlankBehindANumbersPointMayBeAsWideAsACharacter)
{
    EXPECT_EQ(textOf(withGap(readingOf(QStringLiteral("1.打印")), 2, 0.7)), QStringLiteral("1. 打印"));
}

TEST(HanSpacingTest, LeavesLatinTextToTheEngine)
{
    EXPECT_EQ(textOf(readingOf(QStringLiteral("see (a, b) now"))), QStringLiteral("see (a, b) now"));
}

TEST(HanSpacingTest, TakesASignWithTheRoomOfAFullWidthOneForThat)
{
    const LineReading reading = withGap(readingOf(QStringLiteral("说 , 是")), 2, 0.7);
    EXPECT_EQ(textOf(reading), QStringLiteral("说，是"));
}

TEST(HanSpacingTest, NeverPutsABlankBeforeAClosingSign)
{
    EXPECT_EQ(textOf(readingOf(QStringLiteral("权限 (w ) 所"))), QStringLiteral("权限 (w) 所"));
}

TEST(HanSpacingTest, CurvesTheSecondQuotationMarkOfAPairToo)
{
    EXPECT_EQ(textOf(readingOf(QStringLiteral("打“帮助\"菜"))), QStringLiteral("打“帮助”菜"));
}

TEST(HanSpacingTest, HasNoTextForNoReading)
{
    EXPECT_EQ(textOf({}), QString());
}

} // namespace
} // namespace tessary::recognizer
