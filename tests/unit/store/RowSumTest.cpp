#include "store/RowSum.h"

#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

RowSum sumOf(const QByteArray& rows, int columns)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    QByteArrayList names;
    for (int column = 1; column <= columns; ++column)
        names.append("column" + QByteArray::number(column));
    return sumOfRows(connection, names.join(", "), "(" + rows + ")");
}

TEST(RowSumTest, TheOrderOfRowsDoesNotMatter)
{
    EXPECT_EQ(sumOf("VALUES ('a', 1), ('b', 2), ('c', 3)", 2),
              sumOf("VALUES ('c', 3), ('a', 1), ('b', 2)", 2));
}

TEST(RowSumTest, ABlobAndATextOfTheSameBytesAreTheSame)
{
    EXPECT_EQ(sumOf("VALUES ('abc', 1)", 2), sumOf("VALUES (x'616263', 1)", 2));
}

TEST(RowSumTest, EveryChangeOfAValueShows)
{
    const RowSum sum = sumOf("VALUES ('a', 1, 2.5, NULL), ('b', 2, 0.0, 'x')", 4);
    EXPECT_NE(sum, sumOf("VALUES ('a', 1, 2.5, NULL), ('b', 2, 0.0, 'y')", 4));
    EXPECT_NE(sum, sumOf("VALUES ('a', 1, 2.5, ''), ('b', 2, 0.0, 'x')", 4));
    EXPECT_NE(sum, sumOf("VALUES ('a', 1, 2.5000000000000004, NULL), ('b', 2, 0.0, 'x')", 4));
    EXPECT_NE(sum, sumOf("VALUES ('a', 1, 2.5, NULL), ('b', 2, -0.0, 'x')", 4));
    EXPECT_NE(sum, sumOf("VALUES ('a', 1.0, 2.5, NULL), ('b', 2, 0.0, 'x')", 4));
    EXPECT_NE(sum, sumOf("VALUES ('a', 2, 2.5, NULL), ('b', 1, 0.0, 'x')", 4));
}

TEST(RowSumTest, MovingBytesBetweenNeighbouringValuesShows)
{
    EXPECT_NE(sumOf("VALUES ('ab', 'c')", 2), sumOf("VALUES ('a', 'bc')", 2));
}

TEST(RowSumTest, EveryByteOfEveryLengthCounts)
{
    for (int length = 1; length <= 70; ++length) {
        const QByteArray text(length, 'a');
        const RowSum sum = sumOf("VALUES ('" + text + "')", 1);
        EXPECT_NE(sum, sumOf("VALUES ('" + text + "a')", 1));
        for (int i = 0; i < length; ++i) {
            QByteArray changed = text;
            changed[i] = 'b';
            const RowSum other = sumOf("VALUES ('" + changed + "')", 1);
            EXPECT_NE(sum.sums[0], other.sums[0]) << length << ' ' << i;
            EXPECT_NE(sum.sums[1], other.sums[1]) << length << ' ' << i;
        }
    }
}

TEST(RowSumTest, PlacesThatChangePlacesShow)
{
    const QByteArray one(16, 'x');
    const QByteArray other(16, 'y');
    EXPECT_NE(sumOf("VALUES ('" + one + other + "')", 1), sumOf("VALUES ('" + other + one + "')", 1));
    EXPECT_NE(sumOf("VALUES ('abcdefghABCDEFGH')", 1), sumOf("VALUES ('ABCDEFGHabcdefgh')", 1));
    EXPECT_NE(sumOf("VALUES (1, 2)", 2), sumOf("VALUES (2, 1)", 2));
}

TEST(RowSumTest, NothingHasASumToo)
{
    EXPECT_EQ(sumOf("SELECT 1 AS column1 WHERE 0", 1), RowSum());
}

TEST(RowSumTest, EveryRowCounts)
{
    EXPECT_NE(sumOf("VALUES ('a')", 1), sumOf("VALUES ('a'), ('a')", 1));
}

} // namespace
} // namespace tessary
