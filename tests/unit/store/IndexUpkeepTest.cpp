#include "store/IndexUpkeep.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/ProjectionReconciler.h"
#include "store/SQLiteStore.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using testing::textRecord;

constexpr int kItems = 300;

class IndexUpkeepTest : public ::testing::Test {
protected:
    void open() { store = await(SQLiteStore::open(databasePath)); }
    /// A library of so many items, not open.
    void make(int items)
    {
        CoreDataScreenshotStore records(databasePath);
        int made = 0;
        records.adopt([&]() -> std::optional<ScreenshotRecord> {
            if (made == items)
                return std::nullopt;
            return textRecord(QStringLiteral("火锅 %1").arg(made++));
        });
        Projection projection(SQLiteStore::projectionPath(databasePath));
        ProjectionReconciler(records, projection).reconcile();
    }
    /// The same with all of them indexed.
    void makeIndexed(int items)
    {
        make(items);
        Projection(SQLiteStore::projectionPath(databasePath)).indexGrams(items);
        ASSERT_EQ(number("SELECT indexed_through FROM gram_state"), items);
    }
    /// As another program sees the file.
    qint64 number(const QByteArray& sql) const
    {
        return SQLiteConnection(SQLiteStore::projectionPath(databasePath)).integerResult(sql);
    }
    void change(const QByteArray& sql) const
    {
        SQLiteConnection connection(SQLiteStore::projectionPath(databasePath));
        GramIndex::prepare(connection);
        connection.run(sql);
    }
    /// Waits until that many rows are indexed.
    bool areIndexed(qint64 rows) const
    {
        return eventually([&] { return number("SELECT indexed_through FROM gram_state") >= rows; });
    }

    testing::TemporaryFolder folder;
    QString databasePath{folder.file(QStringLiteral("Tessary.sqlite3"))};
    std::unique_ptr<SQLiteStore> store;
};

TEST_F(IndexUpkeepTest, NewItemsAreIndexedOnceTheyAreMany)
{
    make(250);
    open();
    await(store->reconcileProjection());
    for (int i = 0; i < 6; ++i)
        EXPECT_TRUE(await(store->insert(textRecord(QStringLiteral("新的 %1").arg(i)))));
    EXPECT_TRUE(areIndexed(256));
}

TEST_F(IndexUpkeepTest, ALibraryFromBeforeIsIndexedAfterTheStart)
{
    makeIndexed(kItems);
    change("DROP TABLE screenshots_grams; DROP TABLE gram_state");
    open();
    await(store->reconcileProjection());
    EXPECT_TRUE(areIndexed(kItems));
}

TEST_F(IndexUpkeepTest, AnIndexThatMissesRowsIsMadeAnew)
{
    makeIndexed(kItems);
    change("DROP TABLE screenshots_grams; CREATE VIRTUAL TABLE screenshots_grams USING fts5(texts, "
           "content = '', columnsize = 0, detail = none, tokenize = 'tessary_grams')");
    open();
    await(store->reconcileProjection());
    EXPECT_TRUE(areIndexed(kItems));
}

TEST_F(IndexUpkeepTest, FullTextRowsThatBelongToOtherItemsAreMadeAnew)
{
    makeIndexed(kItems);
    change("UPDATE screenshots_fts_v5_content SET c0 = 'somebody else'");
    open();
    await(store->reconcileProjection());
    EXPECT_TRUE(eventually([&] {
        return number("SELECT count(*) FROM screenshots s JOIN screenshots_fts_v5_content f "
                      "ON f.id = s.rowid AND f.c0 = s.id") == kItems;
    }));
}

} // namespace
} // namespace tessary
