#include "store/SQLiteStore.h"

#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

using testing::await;
using testing::fullRecord;
using testing::textRecord;

class SQLiteStoreTest : public ::testing::Test {
protected:
    QString databasePath() const { return m_folder.file(QStringLiteral("Tessary.sqlite3")); }
    QList<ScreenshotRecord> projected() const
    {
        Projection projection(SQLiteStore::projectionPath(databasePath()));
        return projection.records("SELECT " + columnList(kProjectionColumns) + " FROM screenshots");
    }
    void expectSame(const ScreenshotRecord& record)
    {
        EXPECT_EQ(await(store->record(record.id)), record);
        EXPECT_EQ(projected(), QList{record});
    }

private:
    testing::TemporaryFolder m_folder;

protected:
    std::unique_ptr<SQLiteStore> store = await(SQLiteStore::open(databasePath()));
};

TEST_F(SQLiteStoreTest, PutsAnItemIntoBothStores)
{
    const ScreenshotRecord record = fullRecord();
    EXPECT_TRUE(await(store->insert(record)));
    EXPECT_TRUE(await(store->contains(record.contentHash)));
    expectSame(record);
}

TEST_F(SQLiteStoreTest, TakesTheSameContentOnlyOnce)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    EXPECT_TRUE(await(store->insert(record)));
    EXPECT_FALSE(await(store->insert(textRecord(QStringLiteral("x")))));
    expectSame(record);
}

TEST_F(SQLiteStoreTest, ContentThatOnlyTheProjectionKnowsIsRefusedAndTheRecordStoreLeftAsItWas)
{
    const ScreenshotRecord stray = textRecord(QStringLiteral("x"));
    Projection(SQLiteStore::projectionPath(databasePath())).insertProjection(stray);
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    EXPECT_FALSE(await(store->insert(record)));
    EXPECT_FALSE(await(store->contains(record.contentHash)));
    EXPECT_EQ(projected(), QList{stray});
}

TEST_F(SQLiteStoreTest, AFailedInsertionChangesNeitherStore)
{
    SQLiteConnection(SQLiteStore::projectionPath(databasePath())).run("DROP TABLE screenshots_fts_v5");
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    EXPECT_THROW(await(store->insert(record)), StoreError);
    EXPECT_FALSE(await(store->contains(record.contentHash)));
    EXPECT_TRUE(projected().isEmpty());
}

TEST_F(SQLiteStoreTest, CountsARepeatAndItsTimeInBothStores)
{
    ScreenshotRecord record = textRecord(QStringLiteral("x"));
    await(store->insert(record));
    await(store->registerDuplicate(record.contentHash, Date{42.5}));
    record.duplicateCount = 2;
    record.lastUsedAt = Date{42.5};
    expectSame(record);
}

TEST_F(SQLiteStoreTest, ChangesReachBothStores)
{
    ScreenshotRecord record = textRecord(QStringLiteral("x"));
    await(store->insert(record));
    await(store->setFavorite(record.id, true));
    await(store->setPinned(record.id, true));
    await(store->markUsed(record.id, Date{7}));
    await(store->updateMetadata(record.id, {QStringLiteral("标签")}, QStringLiteral("note")));
    await(store->moveToTrash(record.id, Date{8}));
    record.isFavorite = true;
    record.isPinned = true;
    record.lastUsedAt = Date{7};
    record.tags = {QStringLiteral("标签")};
    record.note = QStringLiteral("note");
    record.isDeleted = true;
    record.deletedAt = Date{8};
    expectSame(record);
    EXPECT_EQ(
        Projection(SQLiteStore::projectionPath(databasePath()))
            .connection()
            .integerResult(
                "SELECT count(*) FROM screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH '\"biao qian\"'"),
        1);
}

TEST_F(SQLiteStoreTest, ChangesToAnUnknownItemDoNothing)
{
    const QUuid id = QUuid::createUuid();
    await(store->setFavorite(id, true));
    await(store->setPinned(id, true));
    await(store->markUsed(id, Date{7}));
    await(store->updateMetadata(id, {}, {}));
    await(store->moveToTrash(id, Date{8}));
    await(store->registerDuplicate(QStringLiteral("none"), Date{1}));
    EXPECT_TRUE(projected().isEmpty());
}

TEST_F(SQLiteStoreTest, PurgesOnlyWhatWasTrashedBeforeTheDate)
{
    const ScreenshotRecord kept = textRecord(QStringLiteral("kept"));
    const ScreenshotRecord old = textRecord(QStringLiteral("old"));
    const ScreenshotRecord recent = textRecord(QStringLiteral("recent"));
    for (const ScreenshotRecord& record : {kept, old, recent})
        await(store->insert(record));
    await(store->moveToTrash(old.id, Date{100}));
    await(store->moveToTrash(recent.id, Date{300}));
    const RemovedItems purged = await(store->purgeTrash(Date{200}, 10));
    ASSERT_EQ(purged.items.size(), 1);
    EXPECT_EQ(purged.items.first().id, old.id);
    EXPECT_TRUE(purged.isComplete);
    EXPECT_EQ(projected().size(), 2);
    EXPECT_EQ(await(store->record(old.id)), std::nullopt);
}

TEST_F(SQLiteStoreTest, ReconcilesWhatWasWrittenBehindItsBack)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    await(store->insert(record));
    SQLiteConnection(SQLiteStore::projectionPath(databasePath())).run("DELETE FROM screenshots");
    await(store->reconcileProjection());
    expectSame(record);
}

TEST_F(SQLiteStoreTest, GoesOnAfterALongText)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("长文 long text ").repeated(100'000));
    EXPECT_TRUE(await(store->insert(record)));
    await(store->setPinned(record.id, true));
    EXPECT_TRUE(await(store->insert(textRecord(QStringLiteral("next")))));
    EXPECT_EQ(projected().size(), 2);
    EXPECT_TRUE(projected().first().isPinned);
}

TEST_F(SQLiteStoreTest, OpensAgainWithEverythingThere)
{
    const ScreenshotRecord record = fullRecord();
    await(store->insert(record));
    store.reset();
    store = await(SQLiteStore::open(databasePath()));
    await(store->reconcileProjection());
    expectSame(record);
}

TEST(SQLiteStoreOpeningTest, AProjectionThatIsNoDatabaseIsATypedError)
{
    const testing::TemporaryFolder folder;
    QFile file(folder.file(QStringLiteral("Tessary.metadata.sqlite3")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'g'));
    file.close();
    EXPECT_THROW((void)await(SQLiteStore::open(folder.file(QStringLiteral("Tessary.sqlite3")))), StoreError);
}

} // namespace
} // namespace tessary
