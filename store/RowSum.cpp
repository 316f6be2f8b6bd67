#include "store/RowSum.h"

#include "store/RowHash.h"
#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"

#include <sqlite3.h>

#include <bit>

namespace tessary {
namespace {

constexpr char kFunction[] = "tessary_row_sum";

void addValue(RowHash& hash, sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return hash.addNumber(RowHash::Kind::Integer, std::bit_cast<quint64>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
        return hash.addNumber(RowHash::Kind::Real, std::bit_cast<quint64>(sqlite3_value_double(value)));
    case SQLITE_NULL:
        return hash.addNull();
    default:
        // In this order: asking for the size first could leave it stale after a conversion.
        const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
        return hash.addBytes(bytes, sqlite3_value_bytes(value));
    }
}

/// @returns null when there is no memory, and while summing nothing.
RowSum* sumSoFar(sqlite3_context* context, int bytes)
{
    static_assert(std::is_trivially_copyable_v<RowSum>); // begins as zeros
    return static_cast<RowSum*>(sqlite3_aggregate_context(context, bytes));
}

void addRow(sqlite3_context* context, int count, sqlite3_value** values)
{
    RowSum* sum = sumSoFar(context, sizeof(RowSum));
    if (sum == nullptr)
        return sqlite3_result_error_nomem(context);
    RowHash hash;
    for (int i = 0; i < count; ++i)
        addValue(hash, values[i]);
    const std::array<quint64, 2> hashed = hash.result();
    for (size_t i = 0; i < hashed.size(); ++i)
        sum->sums[i] += hashed[i];
    ++sum->rows;
}

void giveSum(sqlite3_context* context)
{
    const RowSum* sum = sumSoFar(context, 0);
    const RowSum ofNothing;
    sqlite3_result_blob(context, sum != nullptr ? sum : &ofNothing, sizeof(RowSum), SQLITE_TRANSIENT);
}

void install(sqlite3* database)
{
    constexpr int kAnyNumber = -1;
    const int result = sqlite3_create_function_v2(database, kFunction, kAnyNumber, SQLITE_UTF8, nullptr,
                                                  nullptr, &addRow, &giveSum, nullptr);
    if (result != SQLITE_OK)
        throw StoreError(StoreError::Case::Execute, QString::fromUtf8(sqlite3_errmsg(database)));
}

} // namespace

RowSum sumOfRows(SQLiteConnection& connection, const QByteArray& columns, const QByteArray& from)
{
    install(connection.handle());
    SQLiteStatement statement =
        connection.queryOnce("SELECT " + QByteArray(kFunction) + "(" + columns + ") FROM " + from);
    RowSum sum;
    statement.nextRow();
    const QByteArrayView bytes = statement.bytes(0);
    if (bytes.size() == sizeof sum)
        std::memcpy(&sum, bytes.data(), sizeof sum);
    return sum;
}

} // namespace tessary
