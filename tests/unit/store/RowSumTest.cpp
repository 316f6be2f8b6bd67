#include "store/RowSum.h"

#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

RowSum sumOf(const QByteArray& rows, int columns)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    SQLiteStatement statement = connection.query(rows);
    RowSum sum;
    while (statement.nextRow())
        sum.add(statement, columns);
    return sum;
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

TEST(RowSumTest, EveryRowCounts)
{
    EXPECT_NE(sumOf("VALUES ('a')", 1), sumOf("VALUES ('a'), ('a')", 1));
}

} // namespace
} // namespace tessary
