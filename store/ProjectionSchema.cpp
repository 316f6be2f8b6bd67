#include "store/ProjectionSchema.h"

#include "store/sqlite/SQLiteConnection.h"

#include <QStringList>

namespace tessary {
namespace {

constexpr char kTables[] = R"(CREATE TABLE IF NOT EXISTS screenshots (
    id TEXT PRIMARY KEY NOT NULL,
    content_hash TEXT NOT NULL UNIQUE,
    filename TEXT NOT NULL,
    original_path TEXT NOT NULL,
    library_path TEXT NOT NULL,
    thumbnail_path TEXT,
    captured_at REAL NOT NULL,
    imported_at REAL NOT NULL,
    pixel_width INTEGER NOT NULL,
    pixel_height INTEGER NOT NULL,
    file_size INTEGER NOT NULL,
    source_app_name TEXT,
    source_bundle_id TEXT,
    source_app_icon_path TEXT,
    ocr_text TEXT NOT NULL DEFAULT '',
    ocr_status INTEGER NOT NULL DEFAULT 0,
    tags_json TEXT NOT NULL DEFAULT '[]',
    note TEXT NOT NULL DEFAULT '',
    is_favorite INTEGER NOT NULL DEFAULT 0,
    last_used_at REAL,
    is_deleted INTEGER NOT NULL DEFAULT 0,
    deleted_at REAL,
    file_type TEXT NOT NULL DEFAULT '',
    generated_title TEXT,
    is_pinned INTEGER NOT NULL DEFAULT 0,
    duplicate_count INTEGER NOT NULL DEFAULT 1,
    content_type INTEGER NOT NULL DEFAULT 0,
    content_text TEXT NOT NULL DEFAULT ''
);
CREATE INDEX IF NOT EXISTS screenshots_captured_at ON screenshots(captured_at DESC);
CREATE INDEX IF NOT EXISTS screenshots_source_app ON screenshots(source_bundle_id);
CREATE INDEX IF NOT EXISTS screenshots_favorite ON screenshots(is_favorite, is_deleted);
)";

constexpr char kSearchTable[] = R"(CREATE VIRTUAL TABLE IF NOT EXISTS screenshots_fts_v5 USING fts5(
    id UNINDEXED, source_app_name, tags, note, filename, content_text, pinyin,
    tokenize = 'unicode61 remove_diacritics 2'
);)";

constexpr char kPinnedIndex[] =
    "CREATE INDEX IF NOT EXISTS screenshots_pinned ON screenshots(is_pinned, captured_at DESC)";

/// What lists are read from: an index for each order, which also holds what the scopes ask about, so that
/// items outside a scope are passed over without a look at their rows. The scopes that few items are in
/// have small ones of their own, which cost nothing for the other items. The leading equal columns of those
/// of the favourites make SQLite prefer them to `screenshots_favorite`, after which it would have to sort;
/// for the same reason no other may begin with `is_deleted`. The last two are what lists can be narrowed to,
/// and hold `is_deleted` because SQLite would read the rows for it; most items have no tags, and cost the
/// second nothing. (They took the place of one over both.)
constexpr char kListIndexes[] = R"(
CREATE INDEX IF NOT EXISTS list_newest ON screenshots(is_pinned DESC, captured_at DESC,
    is_favorite, content_type, last_used_at, pixel_width, pixel_height, file_size) WHERE is_deleted = 0;
CREATE INDEX IF NOT EXISTS list_oldest ON screenshots(is_pinned DESC, captured_at ASC,
    is_favorite, content_type, last_used_at, pixel_width, pixel_height, file_size) WHERE is_deleted = 0;
CREATE INDEX IF NOT EXISTS list_recently_used ON screenshots(is_pinned DESC, last_used_at IS NULL,
    last_used_at DESC, captured_at DESC,
    is_favorite, content_type, pixel_width, pixel_height, file_size) WHERE is_deleted = 0;
CREATE INDEX IF NOT EXISTS list_file_size ON screenshots(is_pinned DESC, file_size DESC, captured_at DESC,
    is_favorite, content_type, last_used_at, pixel_width, pixel_height) WHERE is_deleted = 0;
CREATE INDEX IF NOT EXISTS list_favorite_newest ON screenshots(is_favorite, is_deleted,
    is_pinned DESC, captured_at DESC) WHERE is_deleted = 0 AND is_favorite = 1;
CREATE INDEX IF NOT EXISTS list_favorite_oldest ON screenshots(is_favorite, is_deleted,
    is_pinned DESC, captured_at ASC) WHERE is_deleted = 0 AND is_favorite = 1;
CREATE INDEX IF NOT EXISTS list_favorite_recently_used ON screenshots(is_favorite, is_deleted,
    is_pinned DESC, last_used_at IS NULL, last_used_at DESC, captured_at DESC)
    WHERE is_deleted = 0 AND is_favorite = 1;
CREATE INDEX IF NOT EXISTS list_favorite_file_size ON screenshots(is_favorite, is_deleted,
    is_pinned DESC, file_size DESC, captured_at DESC) WHERE is_deleted = 0 AND is_favorite = 1;
CREATE INDEX IF NOT EXISTS list_used_newest ON screenshots(is_pinned DESC, captured_at DESC)
    WHERE is_deleted = 0 AND last_used_at IS NOT NULL;
CREATE INDEX IF NOT EXISTS list_large_newest ON screenshots(is_pinned DESC, captured_at DESC)
    WHERE is_deleted = 0 AND (pixel_width * pixel_height >= 12000000 OR file_size >= 10485760);
CREATE INDEX IF NOT EXISTS list_large_oldest ON screenshots(is_pinned DESC, captured_at ASC)
    WHERE is_deleted = 0 AND (pixel_width * pixel_height >= 12000000 OR file_size >= 10485760);
CREATE INDEX IF NOT EXISTS list_large_recently_used ON screenshots(is_pinned DESC, last_used_at IS NULL,
    last_used_at DESC, captured_at DESC)
    WHERE is_deleted = 0 AND (pixel_width * pixel_height >= 12000000 OR file_size >= 10485760);
CREATE INDEX IF NOT EXISTS list_large_file_size ON screenshots(is_pinned DESC, file_size DESC, captured_at DESC)
    WHERE is_deleted = 0 AND (pixel_width * pixel_height >= 12000000 OR file_size >= 10485760);
CREATE INDEX IF NOT EXISTS list_trash ON screenshots(is_deleted) WHERE is_deleted = 1;
CREATE INDEX IF NOT EXISTS list_apps ON screenshots(source_app_name, is_deleted) WHERE is_deleted = 0;
CREATE INDEX IF NOT EXISTS list_tags ON screenshots(tags_json, is_deleted)
    WHERE is_deleted = 0 AND tags_json <> '[]';
DROP INDEX IF EXISTS list_facets;
)";

/// How many segments the full-text index gathers on each level before it makes one of them. Each copy adds
/// one; merging eight of them instead of four writes each entry again less often, and a word is looked for
/// in a few more.
constexpr qint64 kSegmentsMerged = 8;

void prepareSearchTable(SQLiteConnection& connection)
{
    connection.run(kSearchTable);
    if (connection.integerResult("SELECT v FROM screenshots_fts_v5_config WHERE k = 'automerge'") !=
        kSegmentsMerged)
        connection.execute(
            "INSERT INTO screenshots_fts_v5 (screenshots_fts_v5, rank) VALUES ('automerge', ?)",
            {kSegmentsMerged});
}

/// What SQLite cannot know of the indexes by itself, in its own words: items, and how many of them share the
/// first column, the first two, and so on. With it a query for the newest or oldest items since a date looks
/// among the pinned ones and among the others instead of at each item's date. These are no measurements, so
/// that the same query is run the same way in every library.
constexpr char kStatistics[] = R"(
ANALYZE list_trash;
DELETE FROM sqlite_stat1;
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES
    ('screenshots', 'list_newest', '1000000 500000 1 1 1 1 1 1 1'),
    ('screenshots', 'list_oldest', '1000000 500000 1 1 1 1 1 1 1');
ANALYZE sqlite_schema;
)";

/// Makes what lists are read from, all of it or nothing; half a second for 100,000 items.
void prepareLists(SQLiteConnection& connection)
{
    constexpr qint64 kIndexes = 16;
    constexpr qint64 kStatisticRows = 2;
    const bool hasIndexes = connection.integerResult("SELECT count(*) FROM sqlite_schema WHERE "
                                                     "type = 'index' AND name GLOB 'list_*'") == kIndexes;
    const bool hasTable =
        connection.integerResult("SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_stat1'") > 0;
    if (hasIndexes && hasTable &&
        connection.integerResult("SELECT count(*) FROM sqlite_stat1 WHERE idx GLOB 'list_*'") ==
            kStatisticRows)
        return;
    SQLiteTransaction transaction(connection);
    connection.run(kListIndexes);
    connection.run(kStatistics);
    transaction.commit();
}

void ensureColumn(SQLiteConnection& connection, const QByteArray& name, const QByteArray& definition)
{
    SQLiteStatement columns = connection.query("PRAGMA table_info(screenshots)");
    constexpr int kNameColumn = 1;
    while (columns.nextRow()) {
        if (columns.text(kNameColumn).toUtf8() == name)
            return;
    }
    connection.execute("ALTER TABLE screenshots ADD COLUMN " + name + " " + definition);
}

} // namespace

void createProjectionSchema(SQLiteConnection& connection)
{
    connection.run(kTables);
    prepareSearchTable(connection);
    ensureColumn(connection, "file_type", "TEXT NOT NULL DEFAULT ''");
    ensureColumn(connection, "generated_title", "TEXT");
    ensureColumn(connection, "is_pinned", "INTEGER NOT NULL DEFAULT 0");
    ensureColumn(connection, "duplicate_count", "INTEGER NOT NULL DEFAULT 1");
    ensureColumn(connection, "content_type", "INTEGER NOT NULL DEFAULT 0");
    ensureColumn(connection, "content_text", "TEXT NOT NULL DEFAULT ''");
    connection.run(kPinnedIndex);
    prepareLists(connection);
    const bool isEmpty = connection.integerResult("SELECT NOT EXISTS (SELECT 1 FROM screenshots) AND "
                                                  "NOT EXISTS (SELECT 1 FROM screenshots_fts_v5)") != 0;
    if (isEmpty)
        markSearchRowsAligned(connection);
}

void recreateSearchTable(SQLiteConnection& connection)
{
    connection.run("DROP TABLE screenshots_fts_v5");
    prepareSearchTable(connection);
}

qint64 searchRowCount(SQLiteConnection& connection)
{
    // Its table of sizes has one short row an item; counting the full-text rows would read all their texts.
    return connection.integerResult("SELECT count(*) FROM screenshots_fts_v5_docsize");
}

bool hasAlignedSearchRows(SQLiteConnection& connection)
{
    return connection.integerResult("PRAGMA user_version") == kAlignedVersion;
}

void markSearchRowsAligned(SQLiteConnection& connection)
{
    if (!hasAlignedSearchRows(connection))
        connection.run("PRAGMA user_version = " + QByteArray::number(kAlignedVersion));
}

} // namespace tessary
