#include "store/ProjectionReconciler.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::fullRecord;
using testing::textRecord;

class ProjectionReconcilerTest : public ::testing::Test {
protected:
    void addToBoth(const ScreenshotRecord& record)
    {
        structured.insert(record);
        addToProjection(record);
    }
    void addToProjection(const ScreenshotRecord& record)
    {
        projection.insertProjection(record);
        projection.updateSearchIndex(record);
    }
    void reconcile() { ProjectionReconciler(structured, projection).reconcile(); }
    QList<ScreenshotRecord> projected()
    {
        return projection.records("SELECT " + columnList(kProjectionColumns) +
                                  " FROM screenshots ORDER BY id");
    }
    QList<ScreenshotRecord> expected()
    {
        QList<ScreenshotRecord> records = structured.allRecords();
        std::sort(records.begin(), records.end(), [](const auto& left, const auto& right) {
            return identifierText(left.id) < identifierText(right.id);
        });
        return records;
    }
    void expectInStep()
    {
        EXPECT_EQ(projected(), expected());
        EXPECT_EQ(projection.connection().stringResults("SELECT id FROM screenshots_fts_v5 ORDER BY id"),
                  projection.connection().stringResults("SELECT id FROM screenshots ORDER BY id"));
        EXPECT_EQ(projection.connection().integerResult(
                      "SELECT count(*) FROM screenshots s JOIN screenshots_fts_v5 f ON f.rowid = s.rowid AND "
                      "f.id = s.id"),
                  projection.rowCount());
    }

    testing::TemporaryFolder folder;
    CoreDataScreenshotStore structured{folder.file(QStringLiteral("Tessary.sqlite3"))};
    Projection projection{folder.file(QStringLiteral("Tessary.metadata.sqlite3"))};
};

TEST_F(ProjectionReconcilerTest, LeavesStoresThatAgreeAsTheyAre)
{
    addToBoth(fullRecord());
    addToBoth(textRecord(QStringLiteral("a")));
    const qint64 changesBefore = projection.connection().integerResult("SELECT total_changes()");
    reconcile();
    EXPECT_EQ(projection.connection().integerResult("SELECT total_changes()"), changesBefore);
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, CarriesALibraryThatLivedOnlyInTheProjectionOver)
{
    for (int i = 0; i < 5; ++i)
        addToProjection(textRecord(QString::number(i)));
    addToProjection(fullRecord());
    reconcile();
    EXPECT_EQ(structured.count(), 6);
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, MendsWhatACrashBetweenTheTwoCommitsLeaves)
{
    for (int i = 0; i < 20; ++i)
        addToBoth(textRecord(QString::number(i)));
    structured.insert(textRecord(QStringLiteral("only in the store of record")));
    addToProjection(textRecord(QStringLiteral("only in the projection")));
    ScreenshotRecord changed = expected().at(3);
    changed.duplicateCount = 5;
    structured.upsert(changed);
    reconcile();
    EXPECT_EQ(structured.count(), 21);
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, MendsItemsThatSwappedTheirContent)
{
    ScreenshotRecord first = textRecord(QStringLiteral("first"));
    ScreenshotRecord second = textRecord(QStringLiteral("second"));
    addToProjection(first);
    addToProjection(second);
    std::swap(first.contentHash, second.contentHash);
    structured.insert(first);
    structured.insert(second);
    reconcile();
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, RebuildsWhenTheFullTextRowsDoNotFit)
{
    for (int i = 0; i < 3; ++i)
        addToBoth(textRecord(QString::number(i)));
    projection.connection().run("INSERT INTO screenshots_fts_v5 (id, note) VALUES ('X', 'stray')");
    ASSERT_EQ(projection.searchRowCount(), 4);
    reconcile();
    EXPECT_EQ(projection.searchRowCount(), 3);
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, RebuildsAnIndexWhoseRowsAreNotKnownToLieBesideTheirItems)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    addToBoth(record);
    projection.connection().run("UPDATE screenshots SET rowid = 77");
    projection.connection().run("PRAGMA user_version = 0");
    reconcile();
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, RebuildsInTheOrderOfArrival)
{
    QStringList arrived;
    for (int i = 0; i < 20; ++i) {
        const ScreenshotRecord record = textRecord(QString::number(i));
        arrived.append(identifierText(record.id));
        structured.insert(record);
    }
    ASSERT_FALSE(std::is_sorted(arrived.begin(), arrived.end()));
    addToProjection(textRecord(QStringLiteral("stray")));
    projection.connection().run("PRAGMA user_version = 0");
    reconcile();
    EXPECT_EQ(projection.connection().stringResults("SELECT id FROM screenshots ORDER BY rowid"), arrived);
}

TEST_F(ProjectionReconcilerTest, RebuildsWhenMuchDiffers)
{
    for (int i = 0; i < 1100; ++i)
        structured.insert(textRecord(QString::number(i)));
    addToProjection(textRecord(QStringLiteral("stray")));
    reconcile();
    EXPECT_EQ(projection.rowCount(), 1100);
    expectInStep();
}

TEST_F(ProjectionReconcilerTest, AnInvalidRecordIsAnErrorAndLeavesTheProjection)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    addToBoth(record);
    ScreenshotRecord changed = record;
    changed.note = QStringLiteral("y");
    structured.upsert(changed);
    SQLiteConnection(folder.file(QStringLiteral("Tessary.sqlite3")))
        .run("UPDATE ScreenshotEntity SET capturedAt = 'x'");
    EXPECT_THROW(reconcile(), PersistenceError);
    EXPECT_EQ(projected(), QList{record});
}

TEST_F(ProjectionReconcilerTest, TakesEqualValuesOfDifferentSpellingForEqual)
{
    ScreenshotRecord record = fullRecord();
    addToBoth(record);
    projection.connection().run("UPDATE screenshots SET tags_json = replace(tags_json, ',\"', ' , \"')");
    const qint64 changesBefore = projection.connection().integerResult("SELECT total_changes()");
    reconcile();
    EXPECT_EQ(projection.connection().integerResult("SELECT total_changes()"), changesBefore);
}

} // namespace
} // namespace tessary
