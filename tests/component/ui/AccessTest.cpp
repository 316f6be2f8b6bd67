#include "platform/testing/FakeClock.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/ResultList.h"
#include "ui/quicksearch/ResultListModel.h"
#include "ui/quicksearch/TileImages.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QSignalSpy>

namespace tessary {
namespace {

using testing::eventually;
using Action = QAccessibleActionInterface;

QAccessibleInterface& access(QObject& object)
{
    return *QAccessible::queryAccessibleInterface(&object);
}

TEST(AccessibleRoleTest, AWidgetIsWhatItIsSaidToBeWhateverItWasBefore)
{
    QLabel label(QStringLiteral("3 results"));
    EXPECT_EQ(access(label).role(), QAccessible::StaticText);
    label.setAccessibleName(QStringLiteral("3 results"));
    QAccessible::setActive(true);
    setAccessibleRole(label, QAccessible::StatusBar);
    EXPECT_EQ(access(label).role(), QAccessible::StatusBar);
    EXPECT_EQ(access(label).text(QAccessible::Name), QStringLiteral("3 results"));
}

TEST(MenuButtonAccessTest, AButtonWithAMenuSaysSoAndWhetherItIsOpen)
{
    const Theme theme;
    SymbolButton button(theme, QStringLiteral("line.3.horizontal.decrease"));
    button.setText(QStringLiteral("Filter"));
    button.setOpensMenu();
    QAccessibleInterface& told = access(button);
    EXPECT_EQ(told.role(), QAccessible::ButtonMenu);
    EXPECT_EQ(told.text(QAccessible::Name), QStringLiteral("Filter"));
    EXPECT_TRUE(told.state().expandable);
    EXPECT_FALSE(told.state().expanded);
    button.setHeld(true);
    EXPECT_TRUE(told.state().expanded);
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    told.actionInterface()->doAction(Action::showMenuAction());
    EXPECT_TRUE(eventually([&] { return clicked.size() == 1; }));
}

class ResultListAccessTest : public ::testing::Test {
protected:
    void fill(int count)
    {
        QList<ScreenshotRecord> records;
        records.reserve(count);
        for (int i = 0; i < count; ++i)
            records.append(testing::textRecord(QStringLiteral("item %1").arg(i)));
        model.update(records, false);
    }

    testing::FakeClock clock;
    Theme theme;
    TileImages tiles{[](QString, int) -> QCoro::Task<QImage> { co_return QImage(); }};
    ResultListModel model{clock};
    ResultList list{theme, model, tiles};
};

TEST_F(ResultListAccessTest, ARowTellsOfItsItemAndIsSelectedWithIt)
{
    fill(3);
    list.select(1);
    QAccessibleInterface& told = access(list);
    EXPECT_EQ(told.role(), QAccessible::List);
    ASSERT_EQ(told.childCount(), 3);
    QAccessibleInterface* row = told.child(1);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_TRUE(row->text(QAccessible::Name).startsWith(QStringLiteral("item 1, 文字")));
    EXPECT_TRUE(row->state().selected);
    EXPECT_FALSE(told.child(0)->state().selected);
    EXPECT_EQ(told.indexOfChild(row), 1);
    EXPECT_EQ(row->parent(), &told);
}

TEST_F(ResultListAccessTest, ARowIsChosenUsedAndAskedForItsMenuByActions)
{
    fill(3);
    QSignalSpy clicked(&list, &ResultList::rowClicked);
    QSignalSpy activated(&list, &ResultList::rowActivated);
    QSignalSpy menu(&list, &ResultList::rowMenuRequested);
    Action* row = access(list).child(2)->actionInterface();
    row->doAction(Action::setFocusAction());
    ASSERT_TRUE(eventually([&] { return clicked.size() == 1; }));
    EXPECT_EQ(clicked.at(0).at(0).toInt(), 2);
    row->doAction(Action::showMenuAction());
    ASSERT_TRUE(eventually([&] { return menu.size() == 1; }));
    EXPECT_EQ(activated.size(), 0);
    row->doAction(Action::pressAction());
    ASSERT_TRUE(eventually([&] { return activated.size() == 1; }));
    EXPECT_EQ(activated.at(0).at(0).toInt(), 2);
}

TEST_F(ResultListAccessTest, ARowStaysWithItsItemAndEndsWithIt)
{
    fill(3);
    QList<ScreenshotRecord> records = model.records();
    QAccessibleInterface* last = access(list).child(2);
    records.removeFirst();
    model.update(records, false);
    EXPECT_TRUE(last->isValid());
    EXPECT_EQ(access(list).indexOfChild(last), 1);
    EXPECT_EQ(access(list).child(1), last);
    records.removeLast();
    model.update(records, false);
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(last->text(QAccessible::Name), QString());
}

TEST_F(ResultListAccessTest, AHugeListIsNotWalkedThrough)
{
    QAccessible::setActive(true);
    QElapsedTimer timer;
    fill(100'000);
    list.select(0);
    timer.start();
    EXPECT_EQ(access(list).childCount(), 100'000);
    EXPECT_NE(access(list).child(99'999), nullptr);
    list.select(99'999);
    list.select(0);
    EXPECT_LT(timer.elapsed(), 500);
}

} // namespace
} // namespace tessary
