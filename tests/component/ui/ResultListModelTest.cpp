#include "ui/quicksearch/ResultListModel.h"

#include "platform/testing/FakeClock.h"
#include "tests/support/RecordSamples.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Records = QList<ScreenshotRecord>;

class ResultListModelTest : public ::testing::Test {
protected:
    static Records records(int count)
    {
        Records all;
        for (int i = 0; i < count; ++i)
            all.append(testing::textRecord(QStringLiteral("text %1").arg(i)));
        return all;
    }

    testing::FakeClock clock;
    ResultListModel model{clock};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(ResultListModelTest, ANewItemAtTheTopIsOneInsertedRow)
{
    const Records before = records(50);
    model.update(before, false);
    inserted.clear();
    Records after = before;
    after.prepend(testing::textRecord(QStringLiteral("new")));
    model.update(after, false);
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted.first().at(1).toInt(), 0);
    EXPECT_EQ(inserted.first().at(2).toInt(), 0);
    EXPECT_TRUE(removed.isEmpty());
    EXPECT_TRUE(reset.isEmpty());
}

TEST_F(ResultListModelTest, AnItemThatGoesIsOneRemovedRow)
{
    Records all = records(10);
    model.update(all, false);
    all.removeAt(4);
    model.update(all, false);
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(removed.first().at(1).toInt(), 4);
    EXPECT_EQ(removed.first().at(2).toInt(), 4);
    EXPECT_EQ(model.records(), all);
}

TEST_F(ResultListModelTest, AChangedItemKeepsItsRow)
{
    Records all = records(3);
    model.update(all, false);
    inserted.clear();
    all[1].isFavorite = true;
    model.update(all, false);
    EXPECT_TRUE(inserted.isEmpty());
    EXPECT_TRUE(removed.isEmpty());
    EXPECT_TRUE(model.record(1)->isFavorite);
}

TEST_F(ResultListModelTest, AnotherListReplacesTheRows)
{
    model.update(records(5), true);
    const Records other = records(3);
    model.update(other, false);
    EXPECT_EQ(model.records(), other);
    EXPECT_EQ(model.rowCount(), 3);
    model.update({}, false);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ResultListModelTest, WhileThereAreMoreTheLastRowLoadsThem)
{
    model.update(records(2), true);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.record(2), nullptr);
    EXPECT_EQ(model.data(model.index(2), Qt::DisplayRole).toString(), QStringLiteral("加载更多"));
}

TEST_F(ResultListModelTest, ThePageThatFollowsIsAppended)
{
    const Records all = records(6);
    model.update(all.first(3), true);
    inserted.clear();
    model.update(all, true);
    EXPECT_EQ(model.rowCount(), 7);
    ASSERT_FALSE(inserted.isEmpty());
    EXPECT_EQ(inserted.first().at(1).toInt(), 3);
    EXPECT_TRUE(reset.isEmpty());
}

} // namespace
} // namespace tessary
