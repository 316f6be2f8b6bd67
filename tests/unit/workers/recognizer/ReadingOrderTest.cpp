#include "workers/recognizer/ReadingOrder.h"
#include "workers/recognizer/RowJoining.h"

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

std::vector<QRect> sorted(const std::vector<QRect>& boxes)
{
    std::vector<TextLine> lines;
    lines.reserve(boxes.size());
    for (const QRect& box : boxes)
        lines.push_back({.box = box});
    sortForReading(lines);
    std::vector<QRect> result;
    result.reserve(lines.size());
    for (const TextLine& line : lines)
        result.push_back(line.box);
    return result;
}

TEST(ReadingOrderTest, ReadsFromAbove)
{
    const QRect upper(10, 10, 100, 14);
    const QRect lower(5, 40, 100, 14);
    EXPECT_EQ(sorted({lower, upper}), (std::vector{upper, lower}));
}

TEST(ReadingOrderTest, ReadsARowFromTheLeftEvenWhenItIsUneven)
{
    const QRect left(10, 13, 60, 14);
    const QRect middle(120, 10, 60, 12);
    const QRect right(300, 12, 60, 16);
    EXPECT_EQ(sorted({right, middle, left}), (std::vector{left, middle, right}));
}

TEST(ReadingOrderTest, HasNoOrderForNothing)
{
    EXPECT_TRUE(sorted({}).empty());
}

TEST(RowJoiningTest, JoinsWhatAWideBlankParts)
{
    const QList<ReadLine> joined = joinRows(
        {{QRect(10, 10, 40, 14), QStringLiteral("a"), 1}, {QRect(65, 10, 40, 14), QStringLiteral("b"), 0.5}});
    ASSERT_EQ(joined.size(), 1);
    EXPECT_EQ(joined[0].text, QStringLiteral("a b"));
    EXPECT_EQ(joined[0].box, QRect(10, 10, 95, 14));
    EXPECT_DOUBLE_EQ(joined[0].confidence, 0.75);
}

TEST(RowJoiningTest, LeavesRowsColumnsAndSizesApart)
{
    const QList<ReadLine> lines{{QRect(10, 10, 40, 14), QStringLiteral("a"), 1},
                                {QRect(100, 10, 40, 14), QStringLiteral("far"), 1},
                                {QRect(145, 4, 60, 28), QStringLiteral("large"), 1},
                                {QRect(10, 40, 40, 14), QStringLiteral("below"), 1}};
    EXPECT_EQ(joinRows(lines), lines);
}

} // namespace
} // namespace tessary::recognizer
