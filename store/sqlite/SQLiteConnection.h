#pragma once

#include "store/sqlite/SQLiteStatement.h"

#include <QByteArray>
#include <QHash>

#include <memory>

struct sqlite3;

namespace tessary {

/// Bytes of a page of a database that is made; one that is there keeps its own. A copy changes some thirty
/// pages here and there, by few bytes each, and all of each is written, so they are small.
inline constexpr int kDatabasePageSize = 1024;

/// One open SQLite database. Opened in serialised threading mode; used by one thread at a time.
/// Every text is bound or literal SQL of ours; nothing else ever becomes part of a statement.
class SQLiteConnection {
public:
    enum class Access {
        Everything,  ///< Opens, or creates, the file.
        ReadingOnly, ///< Opens a file that is there.
    };

    /// @throws StoreError (OpenDatabase).
    explicit SQLiteConnection(const QString& path, Access access = Access::Everything);

    /// Runs statements without parameters. @throws StoreError (Execute).
    void run(const QByteArray& sql);
    /// Prepares, binds, steps once. @throws StoreError (Prepare for the text, Execute for the rest).
    void execute(const QByteArray& sql, const QList<SQLiteValue>& bindings = {});
    /// A statement ready to step; prepared ones are kept for the next time. @throws StoreError.
    [[nodiscard]] SQLiteStatement query(const QByteArray& sql, const QList<SQLiteValue>& bindings = {});
    /// The same for a statement whose text is hardly ever used again: it is not kept.
    [[nodiscard]] SQLiteStatement queryOnce(const QByteArray& sql, const QList<SQLiteValue>& bindings = {});
    /// The first column of the first row, 0 without one. @throws StoreError.
    [[nodiscard]] qint64 integerResult(const QByteArray& sql, const QList<SQLiteValue>& bindings = {});
    /// The first column of every row. @throws StoreError.
    [[nodiscard]] QStringList stringResults(const QByteArray& sql, const QList<SQLiteValue>& bindings = {});
    /// How many rows the last statement changed.
    [[nodiscard]] int changes() const;
    /// How many rows all statements so far changed, those rolled back included.
    [[nodiscard]] qint64 totalChanges() const;
    [[nodiscard]] qint64 lastInsertRowId() const;
    /// For what is installed on the connection; not to be closed.
    [[nodiscard]] sqlite3* handle() const { return m_database.get(); }

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    [[nodiscard]] sqlite3_stmt* prepare(const QByteArray& sql);

    std::unique_ptr<sqlite3, Close> m_database;
    QHash<QByteArray, std::shared_ptr<sqlite3_stmt>> m_idle; // prepared, reset, nobody using them
};

/// "BEGIN IMMEDIATE" now; "ROLLBACK" when destroyed unless committed.
class SQLiteTransaction {
public:
    /// @throws StoreError (Execute).
    explicit SQLiteTransaction(SQLiteConnection& connection);
    ~SQLiteTransaction();
    SQLiteTransaction(const SQLiteTransaction&) = delete;
    SQLiteTransaction& operator=(const SQLiteTransaction&) = delete;

    /// @throws StoreError (Execute); the transaction is then rolled back.
    void commit();

private:
    SQLiteConnection& m_connection;
    bool m_open = true;
};

/// While it lives, all queries see the database as it is when the first of them begins.
class SQLiteReadTransaction {
public:
    /// @throws StoreError (Execute).
    explicit SQLiteReadTransaction(SQLiteConnection& connection);
    ~SQLiteReadTransaction();
    SQLiteReadTransaction(const SQLiteReadTransaction&) = delete;
    SQLiteReadTransaction& operator=(const SQLiteReadTransaction&) = delete;

private:
    SQLiteConnection& m_connection;
};

} // namespace tessary
