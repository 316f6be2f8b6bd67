#include "workers/recognizer/LatinRuns.h"
#include "tests/unit/workers/recognizer/Readings.h"
#include "workers/recognizer/HanSpacing.h"
#include "workers/recognizer/InkDensity.h"

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

using testing::readingOf;

/// Every character at the place where it stands in the text, ten columns wide.
LineReading placed(QStringView text, double confidence)
{
    LineReading reading;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char(' '))
            continue;
        ReadSymbol symbol;
        symbol.text = text.at(i);
        symbol.left = int(i) * 10;
        symbol.right = symbol.left + 9;
        symbol.confidence = confidence;
        symbol.blankBefore = i > 0 && text.at(i - 1) == QLatin1Char(' ');
        symbol.gapBefore = symbol.blankBefore ? 0.4 : 0.05;
        reading.append(symbol);
    }
    return reading;
}

QString merged(QStringView wide, QStringView latin, double confidence = 98)
{
    return textOf(withLatinRuns(placed(wide, 96), placed(latin, confidence)));
}

TEST(LatinRunsTest, TakesTheWordsOfTheModelThatKnowsThem)
{
    EXPECT_EQ(merged(u"打开 ShelLL 设置", u"#@& shell  4#@").toUtf8(), "打开 shell 设置");
    EXPECT_EQ(merged(u"图形 CUI 界面", u"@# GUI #&").toUtf8(), "图形 GUI 界面");
}

TEST(LatinRunsTest, LeavesAWordThatTheOtherReadingLacksAPieceOf)
{
    EXPECT_EQ(merged(u"子目 usrlocal", u"@# local   ").toUtf8(), "子目 usrlocal");
    EXPECT_EQ(merged(u"目录 usr", u"@# ust", 90).toUtf8(), "目录 usr");
    EXPECT_EQ(merged(u"目录 usr", u"").toUtf8(), "目录 usr");
}

TEST(LatinRunsTest, LeavesHanAndSingleLettersAlone)
{
    EXPECT_FALSE(hasLatinRun(readingOf(QStringLiteral("第 3 页 A 栏"))));
    EXPECT_TRUE(hasLatinRun(readingOf(QStringLiteral("用 vi 改"))));
    EXPECT_EQ(merged(u"第 3 页", u"ab 8 cd").toUtf8(), "第 3 页");
}

TEST(InkDensityTest, CountsTheStrokesAboveEachOtherWhereTheyAreDensest)
{
    GreyPlane plane(60, 20, 255);
    for (int x = 30; x < 60; ++x)
        for (const int y : {2, 3, 8, 14})
            plane.row(y)[x] = 0;
    EXPECT_DOUBLE_EQ(densestStrokes(plane, 20), 3);
    EXPECT_DOUBLE_EQ(densestStrokes(plane, 60), 1.5);
    EXPECT_DOUBLE_EQ(densestStrokes(plane, 61), 0);
}

} // namespace
} // namespace tessary::recognizer
