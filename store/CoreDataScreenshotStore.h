#pragma once

#include "store/ScreenshotRecord.h"
#include "store/sqlite/SQLiteConnection.h"

#include <QSet>

#include <functional>

namespace tessary {

/// What has to be known of an item to remove it: all but its contents.
struct ItemFiles {
    QUuid id;
    qint64 fileSize = 0; ///< As recorded; may be negative in a damaged library.
    QStringList paths;   ///< Original, thumbnail, icon; absent ones left out.
};

/// The store of record: one table of whole items, durable at every commit. Only `SQLiteStore` talks to it,
/// from its lane. All operations block on the disk and throw StoreError, or PersistenceError for contents
/// that cannot be read.
class CoreDataScreenshotStore {
public:
    /// Opens, or creates, the store. @throws StoreError; PersistenceError (NewerVersion) for a file that a
    /// later Tessary wrote.
    explicit CoreDataScreenshotStore(const QString& path);

    [[nodiscard]] bool contains(const QString& contentHash);
    /// The item that holds the content.
    [[nodiscard]] std::optional<QUuid> identifier(const QString& contentHash);
    [[nodiscard]] bool containsRecord(const QUuid& id);
    /// @returns false, having changed nothing, when an item with that content hash exists.
    bool insert(const ScreenshotRecord& record);
    /// Replaces the item with that id, or adds it. An item that held the same content hash under another
    /// id gives way.
    void upsert(const ScreenshotRecord& record);
    [[nodiscard]] std::optional<ScreenshotRecord> record(const QUuid& id);
    [[nodiscard]] std::optional<ScreenshotRecord> record(const QString& contentHash);
    [[nodiscard]] QList<ScreenshotRecord> allRecords();
    /// Up to `limit` items in the order of their identifiers, those after the given one.
    [[nodiscard]] QList<ScreenshotRecord> page(const QUuid& after, int limit);
    /// What is in the trash since before the date.
    [[nodiscard]] QList<ScreenshotRecord> trashed(Date olderThan);
    /// The same, of at most that many of them; without a date, of whatever is in the trash.
    [[nodiscard]] QList<ItemFiles> trashedFiles(std::optional<Date> olderThan, int most);
    /// Of the pictures outside the trash that are neither favourite nor pinned, the oldest; those of one time
    /// in the order in which they were stored.
    [[nodiscard]] QList<ItemFiles> oldestPictureFiles(int most);
    /// The sum over the items outside the trash, a negative size counted as 0.
    [[nodiscard]] qint64 totalFileSize();
    /// Files that items refer to although their names do not hold the item's own id. There are none unless
    /// somebody else wrote the library.
    [[nodiscard]] QSet<QString> foreignFiles();
    /// Whether any item refers to that file. Looks at all of them.
    [[nodiscard]] bool refersTo(const QString& path);
    /// @returns the item as it was; nothing for an unknown id.
    std::optional<ScreenshotRecord> remove(const QUuid& id);
    /// The same without reading the item.
    void discard(const QUuid& id);
    void discardAll();

    [[nodiscard]] SQLiteConnection& connection() { return m_connection; }
    /// Grows with every change of an item, also with those by other connections.
    [[nodiscard]] qint64 changeCount();
    [[nodiscard]] qint64 count();
    /// Every item in the order of its identifier, in the column order of `kProjectionColumns`.
    [[nodiscard]] SQLiteStatement rowsInIdentifierOrder();
    /// The same rows in the order in which they lie on the disk, which is much quicker.
    [[nodiscard]] SQLiteStatement rowsInStoredOrder();
    /// The item in such a row. @throws PersistenceError (InvalidRecord).
    [[nodiscard]] static ScreenshotRecord decode(const SQLiteStatement& row);
    /// Adds the items that the function hands out until it has no more, in one transaction; items that
    /// cannot be added are left out.
    void adopt(const std::function<std::optional<ScreenshotRecord>()>& next);

private:
    [[nodiscard]] SQLiteStatement select(const QByteArray& condition, const QList<SQLiteValue>& bindings);
    [[nodiscard]] QList<ItemFiles> files(const QByteArray& condition, const QList<SQLiteValue>& bindings);
    void write(const QByteArray& verb, const ScreenshotRecord& record);

    SQLiteConnection m_connection;
};

} // namespace tessary
