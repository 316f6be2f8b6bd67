#include "store/CoreDataScreenshotStore.h"
#include "store/LibraryComparison.h"
#include "store/Projection.h"
#include "store/SQLiteStore.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::await;
using testing::textRecord;
using Outcome = ProjectionReconciler::Outcome;

/// A store of record with three items whose projection lacks one of them.
class LibraryReconciliationTest : public ::testing::Test {
protected:
    LibraryReconciliationTest()
    {
        for (const char* text : {"one", "two", "three"})
            EXPECT_TRUE(await(store->insert(textRecord(QString::fromLatin1(text)))));
    }
    QString databasePath() const { return m_folder.file(QStringLiteral("Tessary.sqlite3")); }
    QString projectionPath() const { return SQLiteStore::projectionPath(databasePath()); }
    void loseAnItem() const
    {
        SQLiteConnection connection(projectionPath());
        connection.run("DELETE FROM screenshots_fts_v5 WHERE rowid = 1");
        connection.run("DELETE FROM screenshots WHERE rowid = 1");
    }
    Outcome compare() const
    {
        LibraryComparison comparison(databasePath(), projectionPath());
        return await(comparison.compare({}));
    }
    static ListRequest everything()
    {
        ListRequest request;
        request.limit = 100;
        return request;
    }

private:
    testing::TemporaryFolder m_folder;

protected:
    std::unique_ptr<SQLiteStore> store = await(SQLiteStore::open(databasePath()));
};

TEST_F(LibraryReconciliationTest, TellsWhetherTheProjectionHadToBeChanged)
{
    EXPECT_FALSE(await(store->reconcileProjection()));
    loseAnItem();
    EXPECT_TRUE(await(store->reconcileProjection()));
    EXPECT_FALSE(await(store->reconcileProjection()));
    EXPECT_EQ(await(store->search(everything())).size(), 3);
}

TEST_F(LibraryReconciliationTest, QuestionsMeanwhileAreAnsweredFromTheProjectionAsItIs)
{
    loseAnItem();
    const QCoro::Task<bool> reconciling = store->reconcileProjection();
    EXPECT_EQ(await(store->search(everything())).size(), 2);
    ASSERT_TRUE(testing::eventually([&] { return reconciling.isReady(); }));
    EXPECT_EQ(await(store->search(everything())).size(), 3);
}

TEST_F(LibraryReconciliationTest, ChangesMeanwhileWaitForItsEndAndKeepTheirOrder)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("four"));
    ScreenshotRecord stray = textRecord(QStringLiteral("stray"));
    stray.contentHash = record.contentHash; // for which the new item would be refused
    Projection(projectionPath()).insertProjection(stray);
    const QCoro::Task<bool> reconciling = store->reconcileProjection();
    const QCoro::Task<bool> inserting = store->insert(record);
    const QCoro::Task<> pinning = store->setPinned(record.id, true);
    EXPECT_TRUE(await(
        [](const QCoro::Task<bool>& task) -> QCoro::Task<bool> { co_return co_await task; }(inserting)));
    EXPECT_TRUE(reconciling.isReady());
    ASSERT_TRUE(testing::eventually([&] { return pinning.isReady(); }));
    const QList<ScreenshotRecord> records = await(store->search(everything()));
    ASSERT_EQ(records.size(), 4);
    EXPECT_EQ(records.first().id, record.id);
    EXPECT_TRUE(records.first().isPinned);
}

TEST_F(LibraryReconciliationTest, WhenAskedToStopTheProjectionStaysAndChangesGoOn)
{
    loseAnItem();
    std::stop_source stopped;
    const QCoro::Task<bool> reconciling = store->reconcileProjection(stopped.get_token());
    stopped.request_stop();
    EXPECT_TRUE(await(store->insert(textRecord(QStringLiteral("four")))));
    EXPECT_TRUE(reconciling.isReady());
    EXPECT_EQ(await(store->search(everything())).size(), 3);
}

TEST_F(LibraryReconciliationTest, AComparisonSeesWhetherTheStoresAreInStep)
{
    EXPECT_EQ(compare(), Outcome::InStep);
    SQLiteConnection projection(projectionPath());
    projection.run("UPDATE screenshots SET note = 'x' WHERE rowid = 2");
    EXPECT_EQ(compare(), Outcome::Different);
    projection.run("UPDATE screenshots SET note = '' WHERE rowid = 2");
    EXPECT_EQ(compare(), Outcome::InStep);
    projection.run("DELETE FROM screenshots_fts_v5 WHERE rowid = 2");
    EXPECT_EQ(compare(), Outcome::Different);
}

TEST_F(LibraryReconciliationTest, WhatCannotBeReadIsNotKnown)
{
    LibraryComparison comparison(databasePath(), databasePath() + QStringLiteral(".nothing"));
    EXPECT_EQ(await(comparison.compare({})), Outcome::Unknown);
    std::stop_source stopped;
    stopped.request_stop();
    LibraryComparison given(databasePath(), projectionPath());
    EXPECT_EQ(await(given.compare(stopped.get_token())), Outcome::Unknown);
}

TEST_F(LibraryReconciliationTest, AComparisonThatWasOvertakenByAChangeIsNotTrusted)
{
    CoreDataScreenshotStore structured(databasePath());
    Projection projection(projectionPath());
    ProjectionReconciler reconciler(structured, projection);
    const qint64 before = reconciler.changeCount();
    EXPECT_FALSE(reconciler.reconcile(Outcome::InStep, before));
    loseAnItem(); // by another connection
    EXPECT_NE(reconciler.changeCount(), before);
    EXPECT_TRUE(reconciler.reconcile(Outcome::InStep, before));
    EXPECT_EQ(projection.rowCount(), 3);

    const qint64 mended = reconciler.changeCount();
    structured.discard(structured.allRecords().first().id); // by the connection itself
    EXPECT_TRUE(reconciler.reconcile(Outcome::InStep, mended));
    EXPECT_EQ(projection.rowCount(), 2);
}

TEST_F(LibraryReconciliationTest, AnUnknownOutcomeIsFoundOutAgain)
{
    CoreDataScreenshotStore structured(databasePath());
    Projection projection(projectionPath());
    loseAnItem();
    ProjectionReconciler reconciler(structured, projection);
    EXPECT_TRUE(reconciler.reconcile(Outcome::Unknown, reconciler.changeCount()));
    EXPECT_FALSE(reconciler.reconcile(Outcome::Unknown, reconciler.changeCount()));
    EXPECT_EQ(projection.rowCount(), 3);
}

} // namespace
} // namespace tessary
