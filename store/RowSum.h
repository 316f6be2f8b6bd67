#pragma once

#include <QByteArray>

#include <array>

namespace tessary {

class SQLiteConnection;

/// How many rows a table has, and a 128-bit sum over them that does not depend on their order, so that two
/// tables can be compared while each is read in the order in which it lies on the disk. Tables with the same
/// values have the same sum; different sums mean different values, in the sense of
/// `SQLiteStatement::hasSameValue`. Different tables with the same sum are as unlikely as a disk that errs
/// unnoticed.
struct RowSum {
    std::array<quint64, 2> sums{};
    qint64 rows = 0;

    friend bool operator==(const RowSum&, const RowSum&) = default;
};

/// The sum over all rows, of the columns named, in their order. SQLite hands the values of a row over without
/// copying them. @param from a table, or a query in parentheses. @throws StoreError.
[[nodiscard]] RowSum sumOfRows(SQLiteConnection& connection, const QByteArray& columns,
                               const QByteArray& from);

} // namespace tessary
