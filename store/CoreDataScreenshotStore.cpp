#include "store/CoreDataScreenshotStore.h"

#include "store/RecordColumns.h"
#include "store/StoreError.h"
#include "store/TagsCoding.h"

namespace tessary {
namespace {

constexpr int kSchemaVersion = 1;

constexpr char kSchema[] = R"(
CREATE TABLE IF NOT EXISTS ScreenshotEntity (
    id TEXT NOT NULL UNIQUE,
    contentHash TEXT NOT NULL UNIQUE,
    filename TEXT NOT NULL DEFAULT '',
    fileType TEXT NOT NULL DEFAULT '',
    originalPath TEXT NOT NULL DEFAULT '',
    libraryPath TEXT NOT NULL DEFAULT '',
    thumbnailPath TEXT,
    capturedAt REAL NOT NULL DEFAULT 0,
    importedAt REAL NOT NULL DEFAULT 0,
    pixelWidth INTEGER NOT NULL DEFAULT 0,
    pixelHeight INTEGER NOT NULL DEFAULT 0,
    fileSize INTEGER NOT NULL DEFAULT 0,
    sourceAppName TEXT,
    sourceBundleIdentifier TEXT,
    sourceAppIconPath TEXT,
    ocrText TEXT NOT NULL DEFAULT '',
    ocrStatus INTEGER NOT NULL DEFAULT 0,
    generatedTitle TEXT,
    tagsData BLOB,
    note TEXT NOT NULL DEFAULT '',
    isFavorite INTEGER NOT NULL DEFAULT 0,
    isPinned INTEGER NOT NULL DEFAULT 0,
    duplicateCount INTEGER NOT NULL DEFAULT 1,
    contentType INTEGER NOT NULL DEFAULT 0,
    textContent TEXT NOT NULL DEFAULT '',
    lastUsedAt REAL,
    isDeleted INTEGER NOT NULL DEFAULT 0,
    deletedAt REAL
);
CREATE INDEX IF NOT EXISTS ScreenshotEntity_trash ON ScreenshotEntity(deletedAt) WHERE isDeleted = 1;
CREATE INDEX IF NOT EXISTS ScreenshotEntity_pictures ON ScreenshotEntity(capturedAt)
    WHERE isDeleted = 0 AND isFavorite = 0 AND isPinned = 0 AND contentType = 0;
)";

/// Items with a file whose name does not hold their id. An index of nothing, as a rule, which costs nothing
/// and saves looking at every item whenever some are removed.
constexpr char kHasForeignFiles[] = "(instr(libraryPath, id) = 0 AND libraryPath <> '') "
                                    "OR instr(coalesce(thumbnailPath, id), id) = 0 "
                                    "OR instr(coalesce(sourceAppIconPath, id), id) = 0";

/// Reads required attributes; one that is missing or of the wrong kind makes the record invalid.
class RequiredColumns {
public:
    explicit RequiredColumns(const SQLiteStatement& row) : m_row(row) {}

    [[nodiscard]] QString text(int column) const
    {
        expect(m_row.type(column) == SQLiteStatement::ColumnType::Text);
        return m_row.text(column);
    }
    [[nodiscard]] qint64 integer(int column) const
    {
        expect(m_row.type(column) == SQLiteStatement::ColumnType::Integer);
        return m_row.integer(column);
    }
    [[nodiscard]] Date date(int column) const
    {
        expect(m_row.type(column) == SQLiteStatement::ColumnType::Real);
        return Date{m_row.real(column)};
    }
    [[nodiscard]] QUuid identifier(int column) const
    {
        const QUuid id = QUuid::fromString(text(column));
        expect(!id.isNull());
        return id;
    }
    static void expect(bool condition)
    {
        if (!condition)
            throw PersistenceError(PersistenceError::Case::InvalidRecord);
    }

private:
    const SQLiteStatement& m_row;
};

template <typename Enumeration>
Enumeration required(std::optional<Enumeration> value)
{
    RequiredColumns::expect(value.has_value());
    return *value;
}

} // namespace

CoreDataScreenshotStore::CoreDataScreenshotStore(const QString& path) : m_connection(path)
{
    m_connection.run("PRAGMA page_size = " + QByteArray::number(kDatabasePageSize));
    m_connection.run("PRAGMA journal_mode = WAL");
    m_connection.run("PRAGMA synchronous = FULL");
    m_connection.run("PRAGMA busy_timeout = 5000");
    m_connection.run("PRAGMA journal_size_limit = 16777216"); // after a library was taken over, too
    if (m_connection.integerResult("PRAGMA user_version") > kSchemaVersion)
        throw PersistenceError(PersistenceError::Case::NewerVersion);
    m_connection.run(kSchema);
    m_connection.run(
        QByteArray("CREATE INDEX IF NOT EXISTS ScreenshotEntity_foreign ON ScreenshotEntity(id) WHERE ") +
        kHasForeignFiles);
    m_connection.run("PRAGMA user_version = " + QByteArray::number(kSchemaVersion));
}

SQLiteStatement CoreDataScreenshotStore::select(const QByteArray& condition,
                                                const QList<SQLiteValue>& bindings)
{
    static const QByteArray columns = columnList(kEntityAttributes);
    return m_connection.query("SELECT " + columns + " FROM ScreenshotEntity " + condition, bindings);
}

void CoreDataScreenshotStore::write(const QByteArray& verb, const ScreenshotRecord& record)
{
    static const QByteArray tail = " INTO ScreenshotEntity (" + columnList(kEntityAttributes) +
                                   ") VALUES (?" + QByteArray(", ?").repeated(kRecordColumnCount - 1) + ")";
    SQLiteStatement statement = m_connection.query(verb + tail, recordBindings(record));
    statement.bindBlob(kTagsColumn + 1, encodeTags(record.tags));
    statement.step();
}

bool CoreDataScreenshotStore::contains(const QString& contentHash)
{
    return m_connection.integerResult("SELECT count(*) FROM ScreenshotEntity WHERE contentHash = ?",
                                      {contentHash}) > 0;
}

std::optional<QUuid> CoreDataScreenshotStore::identifier(const QString& contentHash)
{
    SQLiteStatement found =
        m_connection.query("SELECT id FROM ScreenshotEntity WHERE contentHash = ?", {contentHash});
    if (!found.step())
        return std::nullopt;
    return QUuid::fromString(found.text(0));
}

bool CoreDataScreenshotStore::containsRecord(const QUuid& id)
{
    return m_connection.integerResult("SELECT count(*) FROM ScreenshotEntity WHERE id = ?",
                                      {identifierText(id)}) > 0;
}

bool CoreDataScreenshotStore::insert(const ScreenshotRecord& record)
{
    if (contains(record.contentHash))
        return false;
    write("INSERT", record);
    return true;
}

void CoreDataScreenshotStore::upsert(const ScreenshotRecord& record)
{
    write("INSERT OR REPLACE", record);
}

std::optional<ScreenshotRecord> CoreDataScreenshotStore::record(const QUuid& id)
{
    SQLiteStatement rows = select("WHERE id = ?", {identifierText(id)});
    return rows.nextRow() ? std::optional(decode(rows)) : std::nullopt;
}

std::optional<ScreenshotRecord> CoreDataScreenshotStore::record(const QString& contentHash)
{
    SQLiteStatement rows = select("WHERE contentHash = ?", {contentHash});
    return rows.nextRow() ? std::optional(decode(rows)) : std::nullopt;
}

QList<ScreenshotRecord> CoreDataScreenshotStore::allRecords()
{
    SQLiteStatement rows = select("", {});
    QList<ScreenshotRecord> records;
    while (rows.nextRow())
        records.append(decode(rows));
    return records;
}

QList<ScreenshotRecord> CoreDataScreenshotStore::page(const QUuid& after, int limit)
{
    SQLiteStatement rows = select("WHERE id > ? ORDER BY id LIMIT ?",
                                  {after.isNull() ? QString() : identifierText(after), qint64{limit}});
    QList<ScreenshotRecord> records;
    while (rows.nextRow())
        records.append(decode(rows));
    return records;
}

QList<ScreenshotRecord> CoreDataScreenshotStore::trashed(Date olderThan)
{
    SQLiteStatement rows = select("WHERE isDeleted = 1 AND deletedAt < ?", {sqliteValue(olderThan)});
    QList<ScreenshotRecord> records;
    while (rows.nextRow())
        records.append(decode(rows));
    return records;
}

QList<ItemFiles> CoreDataScreenshotStore::files(const QByteArray& condition,
                                                const QList<SQLiteValue>& bindings)
{
    SQLiteStatement rows =
        m_connection.query("SELECT id, fileSize, libraryPath, thumbnailPath, sourceAppIconPath "
                           "FROM ScreenshotEntity " +
                               condition,
                           bindings);
    QList<ItemFiles> items;
    while (rows.nextRow()) {
        ItemFiles item{RequiredColumns(rows).identifier(0), rows.integer(1), {}};
        for (const int column : {2, 3, 4}) {
            const QString path = rows.text(column);
            if (!path.isEmpty())
                item.paths.append(path);
        }
        items.append(item);
    }
    return items;
}

QList<ItemFiles> CoreDataScreenshotStore::trashedFiles(std::optional<Date> olderThan, int most)
{
    if (olderThan)
        return files("WHERE isDeleted = 1 AND deletedAt < ? LIMIT ?",
                     {sqliteValue(*olderThan), qint64(most)});
    return files("WHERE isDeleted = 1 LIMIT ?", {qint64(most)});
}

QList<ItemFiles> CoreDataScreenshotStore::oldestPictureFiles(int most)
{
    return files("WHERE isDeleted = 0 AND isFavorite = 0 AND isPinned = 0 AND contentType = 0 "
                 "ORDER BY capturedAt, rowid LIMIT ?",
                 {qint64(most)});
}

qint64 CoreDataScreenshotStore::totalFileSize()
{
    // All less those in the trash, which have an index: a row's mark lies behind its text.
    return m_connection.integerResult("SELECT coalesce(sum(max(fileSize, 0)), 0) FROM ScreenshotEntity") -
           m_connection.integerResult("SELECT coalesce(sum(max(fileSize, 0)), 0) FROM ScreenshotEntity "
                                      "WHERE isDeleted = 1");
}

QSet<QString> CoreDataScreenshotStore::foreignFiles()
{
    QSet<QString> paths;
    for (const ItemFiles& item : files(QByteArray("WHERE ") + kHasForeignFiles, {})) {
        for (const QString& path : item.paths)
            paths.insert(path);
    }
    return paths;
}

bool CoreDataScreenshotStore::refersTo(const QString& path)
{
    return m_connection.integerResult("SELECT EXISTS (SELECT 1 FROM ScreenshotEntity WHERE libraryPath = ?1 "
                                      "OR thumbnailPath = ?1 OR sourceAppIconPath = ?1)",
                                      {path}) != 0;
}

std::optional<ScreenshotRecord> CoreDataScreenshotStore::remove(const QUuid& id)
{
    std::optional<ScreenshotRecord> found = record(id);
    if (found)
        discard(id);
    return found;
}

void CoreDataScreenshotStore::discard(const QUuid& id)
{
    m_connection.execute("DELETE FROM ScreenshotEntity WHERE id = ?", {identifierText(id)});
}

void CoreDataScreenshotStore::discardAll()
{
    m_connection.run("DELETE FROM ScreenshotEntity");
}

qint64 CoreDataScreenshotStore::changeCount()
{
    return m_connection.totalChanges() + m_connection.integerResult("PRAGMA data_version");
}

qint64 CoreDataScreenshotStore::count()
{
    return m_connection.integerResult("SELECT count(*) FROM ScreenshotEntity");
}

SQLiteStatement CoreDataScreenshotStore::rowsInIdentifierOrder()
{
    return select("ORDER BY id", {});
}

SQLiteStatement CoreDataScreenshotStore::rowsInStoredOrder()
{
    return select("ORDER BY rowid", {});
}

void CoreDataScreenshotStore::adopt(const std::function<std::optional<ScreenshotRecord>()>& next)
{
    SQLiteTransaction transaction(m_connection);
    while (const std::optional<ScreenshotRecord> record = next()) {
        try {
            insert(*record);
        } catch (const StoreError&) {
            continue;
        }
    }
    transaction.commit();
}

ScreenshotRecord CoreDataScreenshotStore::decode(const SQLiteStatement& row)
{
    const RequiredColumns columns(row);
    ScreenshotRecord r;
    r.id = columns.identifier(0);
    r.contentHash = columns.text(1);
    r.filename = columns.text(2);
    r.originalPath = columns.text(3);
    r.libraryPath = columns.text(4);
    r.thumbnailPath = row.optionalText(5);
    r.capturedAt = columns.date(6);
    r.importedAt = columns.date(7);
    r.pixelWidth = columns.integer(8);
    r.pixelHeight = columns.integer(9);
    r.fileSize = columns.integer(10);
    r.sourceAppName = row.optionalText(11);
    r.sourceBundleIdentifier = row.optionalText(12);
    r.sourceAppIconPath = row.optionalText(13);
    r.ocrText = columns.text(14);
    r.ocrStatus = required(ocrStatus(columns.integer(15)));
    r.tags = decodeTags(row.bytes(kTagsColumn).toByteArray());
    r.note = columns.text(17);
    r.isFavorite = columns.integer(18) != 0;
    r.lastUsedAt = row.optionalDate(19);
    r.isDeleted = columns.integer(20) != 0;
    r.deletedAt = row.optionalDate(21);
    r.fileType = columns.text(22);
    r.generatedTitle = row.optionalText(23);
    r.isPinned = columns.integer(24) != 0;
    r.duplicateCount = columns.integer(25);
    r.contentType = required(clipboardContentType(columns.integer(26)));
    r.textContent = columns.text(27);
    return r;
}

} // namespace tessary
