#include "store/RowSum.h"

#include <QHashFunctions>

namespace tessary {
namespace {

// Any two numbers; both sums are of the same rows under different hash functions.
constexpr std::array<size_t, 2> kSeeds{0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F};

template <typename Number>
void appendNumber(QByteArray& bytes, Number number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

} // namespace

void RowSum::appendValue(const SQLiteStatement& row, int column)
{
    using ColumnType = SQLiteStatement::ColumnType;
    switch (row.type(column)) {
    case ColumnType::Integer:
        m_row.append('i');
        return appendNumber(m_row, row.integer(column));
    case ColumnType::Real:
        m_row.append('r');
        return appendNumber(m_row, row.real(column));
    case ColumnType::Null:
        m_row.append('n');
        return;
    case ColumnType::Text:
    case ColumnType::Blob:
        const QByteArrayView bytes = row.bytes(column);
        m_row.append('b');
        appendNumber(m_row, bytes.size());
        m_row.append(bytes);
        return;
    }
}

void RowSum::add(const SQLiteStatement& row, int columns)
{
    m_row.resize(0);
    for (int column = 0; column < columns; ++column)
        appendValue(row, column);
    for (size_t i = 0; i < m_sums.size(); ++i)
        m_sums[i] += qHashBits(m_row.constData(), static_cast<size_t>(m_row.size()), kSeeds[i]);
}

} // namespace tessary
