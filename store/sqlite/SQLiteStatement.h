#pragma once

#include "store/sqlite/SQLiteValue.h"

#include <QByteArrayView>
#include <QList>

#include <functional>
#include <memory>

struct sqlite3_stmt;

namespace tessary {

/// A prepared statement on loan from its connection; goes back, reset, when it is destroyed.
/// Used on one thread, the connection's.
class SQLiteStatement {
public:
    enum class ColumnType { Integer, Real, Text, Blob, Null };

    SQLiteStatement(sqlite3_stmt* statement, std::function<void(sqlite3_stmt*)> giveBack);

    /// Binds the values to the parameters 1, 2, … in order. @throws StoreError (Execute).
    void bind(const QList<SQLiteValue>& values);
    /// @throws StoreError (Execute).
    void bindBlob(int index, QByteArrayView bytes);
    /// UTF-8. @throws StoreError (Execute).
    void bindText(int index, QByteArrayView utf8);
    /// @throws StoreError (Execute).
    void bindInteger(int index, qint64 value);
    /// Back before the first row; what is bound stays bound.
    void reset();
    /// One step. @returns whether there is a row. @throws StoreError (Execute).
    bool step();
    /// One step of a statement that lists rows. @throws StoreError (Prepare).
    bool nextRow();

    [[nodiscard]] ColumnType type(int column) const;
    [[nodiscard]] bool isNull(int column) const { return type(column) == ColumnType::Null; }
    /// The empty string where SQLite has none.
    [[nodiscard]] QString text(int column) const;
    /// At most that many UTF-16 units of the text, never half a surrogate pair at the end; the rest of a
    /// long text is not decoded.
    [[nodiscard]] QString textPrefix(int column, qsizetype maximumLength) const;
    [[nodiscard]] std::optional<QString> optionalText(int column) const;
    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::optional<Date> optionalDate(int column) const;
    /// The bytes of a text or blob; valid until the next step.
    [[nodiscard]] QByteArrayView bytes(int column) const;
    /// Whether both rows hold the same value there. A blob and a text are equal when their bytes are.
    [[nodiscard]] bool hasSameValue(int column, const SQLiteStatement& other, int otherColumn) const;

private:
    void check(int result) const;

    std::unique_ptr<sqlite3_stmt, std::function<void(sqlite3_stmt*)>> m_statement;
};

} // namespace tessary
