#include "store/Projection.h"

#include "store/ProjectionSchema.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QFileInfo>

namespace tessary {
namespace {

using testing::fullRecord;
using testing::textRecord;

class ProjectionTest : public ::testing::Test {
protected:
    QString path() const { return m_folder.file(QStringLiteral("Tessary.metadata.sqlite3")); }
    static QList<ScreenshotRecord> all(Projection& projection)
    {
        return projection.records("SELECT " + columnList(kProjectionColumns) + " FROM screenshots");
    }
    static QStringList names(Projection& projection, const QByteArray& kind)
    {
        return projection.connection().stringResults("SELECT name FROM sqlite_master WHERE type = '" + kind +
                                                     "' AND tbl_name = 'screenshots' AND name "
                                                     "NOT LIKE 'sqlite_%' ORDER BY name");
    }

private:
    testing::TemporaryFolder m_folder;
};

TEST_F(ProjectionTest, ARowHoldsEveryPropertyBitForBit)
{
    Projection projection(path());
    const ScreenshotRecord record = fullRecord();
    EXPECT_TRUE(projection.insertProjection(record));
    EXPECT_EQ(all(projection), QList{record});
}

TEST_F(ProjectionTest, SkipsARowWhoseIdOrContentExists)
{
    Projection projection(path());
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    EXPECT_TRUE(projection.insertProjection(record));
    EXPECT_FALSE(projection.insertProjection(textRecord(QStringLiteral("x"))));
    ScreenshotRecord sameId = textRecord(QStringLiteral("y"));
    sameId.id = record.id;
    EXPECT_FALSE(projection.insertProjection(sameId));
    EXPECT_EQ(projection.rowCount(), 1);
}

TEST_F(ProjectionTest, AnOlderDatabaseGainsTheColumnsItLacksWithTheirDefaults)
{
    const QByteArray oldTable =
        "CREATE TABLE screenshots (id TEXT PRIMARY KEY NOT NULL, content_hash TEXT NOT NULL UNIQUE, "
        "filename TEXT NOT NULL, original_path TEXT NOT NULL, library_path TEXT NOT NULL, thumbnail_path "
        "TEXT, "
        "captured_at REAL NOT NULL, imported_at REAL NOT NULL, pixel_width INTEGER NOT NULL, "
        "pixel_height INTEGER NOT NULL, file_size INTEGER NOT NULL, source_app_name TEXT, "
        "source_bundle_id TEXT, source_app_icon_path TEXT, ocr_text TEXT NOT NULL DEFAULT '', "
        "ocr_status INTEGER NOT NULL DEFAULT 0, tags_json TEXT NOT NULL DEFAULT '[]', "
        "note TEXT NOT NULL DEFAULT '', is_favorite INTEGER NOT NULL DEFAULT 0, last_used_at REAL, "
        "is_deleted INTEGER NOT NULL DEFAULT 0, deleted_at REAL)";
    {
        SQLiteConnection old(path());
        old.run(oldTable);
        old.run(
            "INSERT INTO screenshots (id, content_hash, filename, original_path, library_path, captured_at, "
            "imported_at, pixel_width, pixel_height, file_size) VALUES "
            "('A0000000-0000-4000-8000-000000000001', 'h', 'f', 'o', 'l', 1.5, 2.5, 3, 4, 5)");
    }
    Projection projection(path());
    const QStringList columns =
        projection.connection().stringResults("SELECT name FROM pragma_table_info('screenshots')");
    EXPECT_EQ(columns.mid(22), (QStringList{QStringLiteral("file_type"), QStringLiteral("generated_title"),
                                            QStringLiteral("is_pinned"), QStringLiteral("duplicate_count"),
                                            QStringLiteral("content_type"), QStringLiteral("content_text")}));
    EXPECT_TRUE(names(projection, "index").contains(QStringLiteral("screenshots_pinned")));
    const QList<ScreenshotRecord> rows = all(projection);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.first().duplicateCount, 1);
    EXPECT_EQ(rows.first().contentType, ClipboardContentType::Image);
    EXPECT_EQ(rows.first().generatedTitle, std::nullopt);
    EXPECT_FALSE(rows.first().isPinned);
    EXPECT_EQ(rows.first().capturedAt, Date{1.5});
}

TEST_F(ProjectionTest, ANewDatabaseHasItsIndexesAndOpensAgain)
{
    for (int i = 0; i < 2; ++i) {
        Projection projection(path());
        const QStringList indexes = names(projection, "index");
        EXPECT_EQ(
            indexes.filter(QStringLiteral("screenshots_")),
            (QStringList{QStringLiteral("screenshots_captured_at"), QStringLiteral("screenshots_favorite"),
                         QStringLiteral("screenshots_pinned"), QStringLiteral("screenshots_source_app")}));
        EXPECT_EQ(indexes.filter(QStringLiteral("list_")).size(), 16);
    }
}

TEST_F(ProjectionTest, MergesItsFullTextSegmentsByEightHoweverTheTableCameToBe)
{
    const auto merged = [](Projection& projection) {
        return projection.connection().integerResult(
            "SELECT v FROM screenshots_fts_v5_config WHERE k = 'automerge'");
    };
    {
        Projection projection(path());
        EXPECT_EQ(merged(projection), 8);
        recreateSearchTable(projection.connection());
        EXPECT_EQ(merged(projection), 8);
        projection.connection().run("DELETE FROM screenshots_fts_v5_config WHERE k = 'automerge'");
    }
    Projection older(path());
    EXPECT_EQ(merged(older), 8);
}

TEST_F(ProjectionTest, ALogThatGrewWithOneLargeChangeIsCut)
{
    Projection projection(path());
    const auto sizeOfLog = [this] { return QFileInfo(path() + QStringLiteral("-wal")).size(); };
    projection.connection().run("CREATE TABLE large AS SELECT randomblob(40000000) AS content");
    EXPECT_GT(sizeOfLog(), 40'000'000);
    projection.insertProjection(fullRecord());
    EXPECT_LE(sizeOfLog(), 16 * 1024 * 1024);
}

TEST_F(ProjectionTest, DecodesNumbersOutOfRangeAsDefaults)
{
    Projection projection(path());
    projection.insertProjection(fullRecord());
    projection.connection().run(
        "UPDATE screenshots SET duplicate_count = 0, ocr_status = 9, content_type = 7, "
        "tags_json = 'not json', is_favorite = 5");
    const ScreenshotRecord row = all(projection).first();
    EXPECT_EQ(row.duplicateCount, 1);
    EXPECT_EQ(row.ocrStatus, OCRStatus::Pending);
    EXPECT_EQ(row.contentType, ClipboardContentType::Image);
    EXPECT_TRUE(row.tags.isEmpty());
    EXPECT_TRUE(row.isFavorite);
}

TEST_F(ProjectionTest, ARowWithAnUnreadableIdIsStillListed)
{
    Projection projection(path());
    projection.insertProjection(fullRecord());
    projection.connection().run("UPDATE screenshots SET id = 'nobody'");
    ASSERT_EQ(all(projection).size(), 1);
    EXPECT_FALSE(all(projection).first().id.isNull());
}

TEST_F(ProjectionTest, FullTextFindsTagsNotesTextAndPinyinButNotRecognisedText)
{
    Projection projection(path());
    ScreenshotRecord record = fullRecord();
    record.textContent = QStringLiteral("中国制造 made here");
    record.generatedTitle = QStringLiteral("headline");
    projection.insertProjection(record);
    projection.updateSearchIndex(record);
    projection.updateSearchIndex(record);
    EXPECT_EQ(projection.searchRowCount(), 1);
    const auto finds = [&](const char* term) {
        return projection.connection().integerResult(
            "SELECT count(*) FROM screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?",
            {QString::fromUtf8(term)});
    };
    for (const char* term :
         {"zhongguo*", "\"zhong guo\"*", "made", "note", "quotes", "\"wen ben bian ji qi\""})
        EXPECT_EQ(finds(term), 1) << term;
    EXPECT_EQ(finds("recognised"), 0);
    EXPECT_EQ(finds("headline"), 0);
}

TEST_F(ProjectionTest, RemovesTheRowAndItsFullTextOnly)
{
    Projection projection(path());
    const ScreenshotRecord gone = textRecord(QStringLiteral("gone"));
    const ScreenshotRecord kept = textRecord(QStringLiteral("kept"));
    for (const ScreenshotRecord& record : {gone, kept}) {
        projection.insertProjection(record);
        projection.updateSearchIndex(record);
    }
    projection.remove(identifierText(gone.id));
    EXPECT_EQ(all(projection), QList{kept});
    EXPECT_EQ(projection.connection().stringResults("SELECT id FROM screenshots_fts_v5"),
              QStringList{identifierText(kept.id)});
}

TEST_F(ProjectionTest, AFileThatIsNoDatabaseIsATypedError)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'g'));
    file.close();
    try {
        Projection projection(path());
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_TRUE(error.localizedDescription().startsWith(QStringLiteral("数据库操作失败：")));
        EXPECT_TRUE(error.message().contains(QStringLiteral("not a database")));
    }
}

TEST_F(ProjectionTest, AFolderThatDoesNotExistCannotBeOpened)
{
    try {
        Projection projection(path() + QStringLiteral("/none/x"));
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.which(), StoreError::Case::OpenDatabase);
        EXPECT_TRUE(error.localizedDescription().startsWith(QStringLiteral("无法打开数据库：")));
    }
}

TEST_F(ProjectionTest, AQueryThatCannotBePreparedSaysSo)
{
    Projection projection(path());
    try {
        (void)projection.records("SELECT nothing FROM nowhere");
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.which(), StoreError::Case::Prepare);
        EXPECT_TRUE(error.localizedDescription().startsWith(QStringLiteral("数据库查询失败：")));
    }
}

} // namespace
} // namespace tessary
