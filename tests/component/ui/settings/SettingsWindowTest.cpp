#include "tests/component/ui/settings/SettingsFixture.h"
#include "ui/kit/SegmentedControl.h"

#include <QAccessible>
#include <QScreen>
#include <QScrollBar>

namespace tessary {
namespace {

using testing::eventually;

class SettingsWindowTest : public testing::SettingsFixture {
protected:
    void SetUp() override { open(SettingsTab::General); }
};

TEST_F(SettingsWindowTest, HasItsTitleAndSizes)
{
    FramedWindow& window = controller->window();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Tessary 设置"));
    const QSize room = window.screen()->availableGeometry().size();
    EXPECT_EQ(window.bodyGeometry().size(), QSize(780, 540).boundedTo(room));
    EXPECT_EQ(window.minimumSize(), QSize(700, 500).boundedTo(room));
    EXPECT_EQ(window.maximumSize(), QSize(1200, 900).boundedTo(room));
}

TEST_F(SettingsWindowTest, IsTheSameWindowWhenShownAgain)
{
    view().selectTab(SettingsTab::OCR);
    const QWidget* first = &controller->window();
    controller->close();
    EXPECT_FALSE(first->isVisible());
    controller->show();
    EXPECT_EQ(&controller->window(), first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(view().selectedTab(), SettingsTab::OCR);
    EXPECT_EQ(effects.activated, first->winId());
}

TEST_F(SettingsWindowTest, ComesBackWhenItWasMinimised)
{
    click(QStringLiteral("最小化"));
    ASSERT_TRUE(controller->window().isMinimized());
    controller->show();
    EXPECT_FALSE(controller->window().isMinimized());
}

TEST_F(SettingsWindowTest, ClosesByItsButtonAndByKeys)
{
    click(QStringLiteral("关闭"));
    EXPECT_FALSE(controller->window().isVisible());
    for (const auto& [key, modifiers] : {std::pair(Qt::Key_Escape, Qt::KeyboardModifiers()),
                                         std::pair(Qt::Key_W, Qt::KeyboardModifiers(Qt::ControlModifier))}) {
        controller->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window().windowHandle()));
        press(key, modifiers);
        EXPECT_FALSE(controller->window().isVisible());
    }
}

TEST_F(SettingsWindowTest, KeysSwitchTabs)
{
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(view().selectedTab(), SettingsTab::OCR);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(view().selectedTab(), SettingsTab::Privacy);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(view().selectedTab(), SettingsTab::General);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(view().selectedTab(), SettingsTab::Privacy);
}

TEST_F(SettingsWindowTest, ScreenReadersSeeTabs)
{
    auto* tabs = view().findChild<SegmentedControl*>();
    ASSERT_NE(tabs, nullptr);
    auto* face = QAccessible::queryAccessibleInterface(tabs);
    EXPECT_EQ(face->role(), QAccessible::PageTabList);
    QStringList names;
    for (int i = 0; i < tabs->count(); ++i)
        names.append(face->child(i)->text(QAccessible::Name));
    EXPECT_EQ(names, (QStringList{QStringLiteral("通用"), QStringLiteral("存储"), QStringLiteral("OCR"),
                                  QStringLiteral("隐私")}));
}

/// Every control that can be clicked is reached by the Tab key, and has a name.
TEST_F(SettingsWindowTest, TheKeyboardReachesEverything)
{
    for (const SettingsTab tab :
         {SettingsTab::General, SettingsTab::Storage, SettingsTab::OCR, SettingsTab::Privacy}) {
        view().selectTab(tab);
        QSet<QWidget*> reached;
        view().findChild<SegmentedControl*>()->setFocus();
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(controller->window().windowHandle(), Qt::Key_Tab);
            if (QApplication::focusWidget() != nullptr)
                reached.insert(QApplication::focusWidget());
        }
        for (auto* control : page().findChildren<QAbstractButton*>()) {
            if (!control->isVisible() || !control->isEnabled())
                continue;
            EXPECT_TRUE(reached.contains(control)) << control->accessibleName().toStdString();
            EXPECT_FALSE(control->accessibleName().isEmpty() && control->text().isEmpty());
        }
    }
}

TEST_F(SettingsWindowTest, LargeTextScrollsAndNothingIsWiderThanThePage)
{
    theme.setTextScale(2);
    for (const SettingsTab tab :
         {SettingsTab::General, SettingsTab::Storage, SettingsTab::OCR, SettingsTab::Privacy}) {
        view().selectTab(tab);
        EXPECT_TRUE(eventually([this] { return page().widget()->width() <= page().viewport()->width(); }))
            << static_cast<int>(tab) << ": " << page().widget()->width();
    }
    EXPECT_GT(page().verticalScrollBar()->maximum(), 0);
    EXPECT_LE(controller->window().height(), controller->window().screen()->availableGeometry().height());
}

} // namespace
} // namespace tessary
