#include "store/sqlite/SQLiteConnection.h"

#include "store/StoreError.h"

#include <QFile>
#include <QStringList>

#include <sqlite3.h>

namespace tessary {

void SQLiteConnection::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

void SQLiteConnection::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

SQLiteConnection::SQLiteConnection(const QString& path, Access access)
{
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (access == Access::ReadingOnly)
        flags = SQLITE_OPEN_READONLY;
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &database,
                                       flags | SQLITE_OPEN_FULLMUTEX, nullptr);
    m_database.reset(database);
    if (result != SQLITE_OK) {
        const QString message = database != nullptr ? QString::fromUtf8(sqlite3_errmsg(database))
                                                    : QStringLiteral("Unknown error");
        throw StoreError(StoreError::Case::OpenDatabase, message);
    }
}

void SQLiteConnection::run(const QByteArray& sql)
{
    char* message = nullptr;
    if (sqlite3_exec(m_database.get(), sql.constData(), nullptr, nullptr, &message) == SQLITE_OK)
        return;
    const StoreError error(StoreError::Case::Execute, QString::fromUtf8(message));
    sqlite3_free(message);
    throw error;
}

sqlite3_stmt* SQLiteConnection::prepare(const QByteArray& sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(m_database.get(), sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw StoreError(StoreError::Case::Prepare, QString::fromUtf8(sqlite3_errmsg(m_database.get())));
    return statement;
}

SQLiteStatement SQLiteConnection::query(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    std::shared_ptr<sqlite3_stmt> prepared = m_idle.take(sql);
    if (!prepared)
        prepared = std::shared_ptr<sqlite3_stmt>(prepare(sql), Finalize{});
    sqlite3_stmt* borrowed = prepared.get();
    SQLiteStatement statement(borrowed, [this, sql, prepared](sqlite3_stmt* used) {
        // Texts of many megabytes must not stay bound until the next time.
        sqlite3_reset(used);
        sqlite3_clear_bindings(used);
        m_idle.insert(sql, prepared);
    });
    statement.bind(bindings);
    return statement;
}

SQLiteStatement SQLiteConnection::queryOnce(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    SQLiteStatement statement(prepare(sql), Finalize{});
    statement.bind(bindings);
    return statement;
}

void SQLiteConnection::execute(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    SQLiteStatement statement = query(sql, bindings);
    statement.step();
}

qint64 SQLiteConnection::integerResult(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    SQLiteStatement statement = query(sql, bindings);
    return statement.nextRow() ? statement.integer(0) : 0;
}

QStringList SQLiteConnection::stringResults(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    SQLiteStatement statement = query(sql, bindings);
    QStringList results;
    while (statement.nextRow())
        results.append(statement.text(0));
    return results;
}

int SQLiteConnection::changes() const
{
    return sqlite3_changes(m_database.get());
}

qint64 SQLiteConnection::totalChanges() const
{
    return sqlite3_total_changes64(m_database.get());
}

qint64 SQLiteConnection::lastInsertRowId() const
{
    return sqlite3_last_insert_rowid(m_database.get());
}

SQLiteTransaction::SQLiteTransaction(SQLiteConnection& connection) : m_connection(connection)
{
    m_connection.run("BEGIN IMMEDIATE");
}

SQLiteTransaction::~SQLiteTransaction()
{
    if (!m_open)
        return;
    try {
        m_connection.run("ROLLBACK");
    } catch (const StoreError&) {
        // SQLite has rolled back by itself, after a full disk for one.
    }
}

SQLiteReadTransaction::SQLiteReadTransaction(SQLiteConnection& connection) : m_connection(connection)
{
    m_connection.run("BEGIN");
}

SQLiteReadTransaction::~SQLiteReadTransaction()
{
    try {
        m_connection.run("ROLLBACK");
    } catch (const StoreError& error) {
        qWarning("A query of the library could not be ended: %s", error.what());
    }
}

void SQLiteTransaction::commit()
{
    m_connection.run("COMMIT");
    m_open = false;
}

} // namespace tessary
