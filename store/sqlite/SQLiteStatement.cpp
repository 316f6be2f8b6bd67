#include "store/sqlite/SQLiteStatement.h"

#include "store/StoreError.h"

#include <sqlite3.h>

#include <bit>

namespace tessary {
namespace {

StoreError errorOf(sqlite3_stmt* statement, StoreError::Case which)
{
    return {which, QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(statement)))};
}

int bindValue(sqlite3_stmt* statement, int index, const SQLiteValue& value)
{
    if (const auto* text = std::get_if<QString>(&value)) {
        const QByteArray utf8 = text->toUtf8();
        return sqlite3_bind_text64(statement, index, utf8.constData(),
                                   static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    if (const auto* integer = std::get_if<qint64>(&value))
        return sqlite3_bind_int64(statement, index, *integer);
    if (const auto* real = std::get_if<double>(&value))
        return sqlite3_bind_double(statement, index, *real);
    return sqlite3_bind_null(statement, index);
}

} // namespace

SQLiteStatement::SQLiteStatement(sqlite3_stmt* statement, std::function<void(sqlite3_stmt*)> giveBack)
    : m_statement(statement, std::move(giveBack))
{
}

void SQLiteStatement::check(int result) const
{
    if (result != SQLITE_OK)
        throw errorOf(m_statement.get(), StoreError::Case::Execute);
}

void SQLiteStatement::bind(const QList<SQLiteValue>& values)
{
    for (qsizetype i = 0; i < values.size(); ++i)
        check(bindValue(m_statement.get(), static_cast<int>(i) + 1, values.at(i)));
}

void SQLiteStatement::bindBlob(int index, QByteArrayView bytes)
{
    check(sqlite3_bind_blob64(m_statement.get(), index, bytes.data(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT));
}

void SQLiteStatement::bindText(int index, QByteArrayView utf8)
{
    check(sqlite3_bind_text64(m_statement.get(), index, utf8.data(), static_cast<sqlite3_uint64>(utf8.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
}

void SQLiteStatement::bindInteger(int index, qint64 value)
{
    check(sqlite3_bind_int64(m_statement.get(), index, value));
}

void SQLiteStatement::reset()
{
    sqlite3_reset(m_statement.get()); // tells once more how the last step ended
}

bool SQLiteStatement::step()
{
    const int result = sqlite3_step(m_statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw errorOf(m_statement.get(), StoreError::Case::Execute);
    return result == SQLITE_ROW;
}

bool SQLiteStatement::nextRow()
{
    const int result = sqlite3_step(m_statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw errorOf(m_statement.get(), StoreError::Case::Prepare);
    return result == SQLITE_ROW;
}

SQLiteStatement::ColumnType SQLiteStatement::type(int column) const
{
    switch (sqlite3_column_type(m_statement.get(), column)) {
    case SQLITE_INTEGER:
        return ColumnType::Integer;
    case SQLITE_FLOAT:
        return ColumnType::Real;
    case SQLITE_TEXT:
        return ColumnType::Text;
    case SQLITE_BLOB:
        return ColumnType::Blob;
    default:
        return ColumnType::Null;
    }
}

QByteArrayView SQLiteStatement::bytes(int column) const
{
    // In this order: asking for the size first could leave it stale after a conversion.
    const void* data = sqlite3_column_blob(m_statement.get(), column);
    return {static_cast<const char*>(data), sqlite3_column_bytes(m_statement.get(), column)};
}

QString SQLiteStatement::text(int column) const
{
    const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    if (data == nullptr)
        return QString();
    return QString::fromUtf8(data, sqlite3_column_bytes(m_statement.get(), column));
}

QString SQLiteStatement::textPrefix(int column, qsizetype maximumLength) const
{
    constexpr qsizetype kMostBytesOfUnit = 3;
    const QByteArrayView all = bytes(column);
    const qsizetype enough = kMostBytesOfUnit * (maximumLength + 1); // with room for a character cut short
    QString text = QString::fromUtf8(all.first(std::min(all.size(), enough)));
    if (text.size() <= maximumLength)
        return text;
    text.truncate(maximumLength);
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    return text;
}

std::optional<QString> SQLiteStatement::optionalText(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return text(column);
}

qint64 SQLiteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double SQLiteStatement::real(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

std::optional<Date> SQLiteStatement::optionalDate(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return Date{real(column)};
}

bool SQLiteStatement::hasSameValue(int column, const SQLiteStatement& other, int otherColumn) const
{
    const ColumnType mine = type(column);
    const ColumnType theirs = other.type(otherColumn);
    const auto isBytes = [](ColumnType kind) { return kind == ColumnType::Text || kind == ColumnType::Blob; };
    if (isBytes(mine) && isBytes(theirs))
        return bytes(column) == other.bytes(otherColumn);
    if (mine != theirs)
        return false;
    switch (mine) {
    case ColumnType::Integer:
        return integer(column) == other.integer(otherColumn);
    case ColumnType::Real:
        return std::bit_cast<quint64>(real(column)) == std::bit_cast<quint64>(other.real(otherColumn));
    default:
        return true;
    }
}

} // namespace tessary
