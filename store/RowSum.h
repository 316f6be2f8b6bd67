#pragma once

#include "store/sqlite/SQLiteStatement.h"

#include <QByteArray>

#include <array>

namespace tessary {

/// A 128-bit sum over rows that does not depend on their order, so that two tables can be compared while each
/// is read in the order in which it lies on the disk. Tables with the same values have the same sum;
/// different sums mean different values, in the sense of `SQLiteStatement::hasSameValue`. Different tables
/// with the same sum are as unlikely as a disk that errs unnoticed.
class RowSum {
public:
    /// Adds the row's first `columns` values.
    void add(const SQLiteStatement& row, int columns);

    friend bool operator==(const RowSum& left, const RowSum& right) { return left.m_sums == right.m_sums; }

private:
    void appendValue(const SQLiteStatement& row, int column);

    std::array<quint64, 2> m_sums{};
    QByteArray m_row; // kept for its memory
};

} // namespace tessary
