#include "app/menubar/MenuBarContent.h"

#include "app/AppRuntime.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "ui/kit/Theme.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

const testing::FakeGlobalHotKeyFacility::Combination kQuickSearch{49, 2048};
const testing::FakeGlobalHotKeyFacility::Combination kLocalOCR{31, 6144};

class MenuBarContentTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    ~MenuBarContentTest() override { await(runtime.shutDown()); }

    void registerHotKeys(int taken)
    {
        bool registered = false;
        QObject context;
        QObject::connect(&runtime, &AppRuntime::hotKeysChanged, &context, [&] { registered = true; });
        runtime.registerHotKeys();
        ASSERT_TRUE(eventually([&] { return registered; }));
        ASSERT_EQ(runtime.hotKeyConflicts().size(), taken);
    }
    /// What a person sees, from top to bottom; "-" is a divider, text in brackets cannot be chosen.
    QStringList rows()
    {
        QStringList rows;
        for (const QAction* action : content.menu().actions()) {
            if (!action->isVisible())
                continue;
            rows.append(action->isSeparator() ? QStringLiteral("-")
                        : action->isEnabled() ? action->text()
                                              : u'[' + action->text() + u']');
        }
        return rows;
    }
    void choose(const QString& text)
    {
        for (QAction* action : content.menu().actions()) {
            if (action->text() == text)
                return action->trigger();
        }
        ADD_FAILURE() << "no row " << qPrintable(text);
    }
    void openMenu()
    {
        content.menu().popup(QPoint(20, 20));
        ASSERT_TRUE(eventually([&] { return content.menu().isVisible(); }));
    }

    testing::FakeWindows windows;
    AppRuntime runtime{platform, windows};
    Theme theme;
    MenuBarContent content{runtime, theme};
    int quits = 0;
    QMetaObject::Connection quitting =
        QObject::connect(&content, &MenuBarContent::quitRequested, [this] { ++quits; });
};

TEST_F(MenuBarContentTest, ListsWhatThereIsToDo)
{
    registerHotKeys(0);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("打开 Tessary"), QStringLiteral("-"),
                                   QStringLiteral("设置…"), QStringLiteral("退出 Tessary")}));
}

TEST_F(MenuBarContentTest, WarnsUnderTheFirstRowWhileAnotherProgramHoldsTheShortcutOfThePanel)
{
    hotKeys.take(kQuickSearch);
    registerHotKeys(1);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("打开 Tessary"),
                                   QStringLiteral("[打开 Tessary 的全局快捷键不可用]"), QStringLiteral("-"),
                                   QStringLiteral("设置…"), QStringLiteral("退出 Tessary")}));
    hotKeys.free(kQuickSearch);
    registerHotKeys(0);
    EXPECT_EQ(rows().size(), 4);
}

TEST_F(MenuBarContentTest, SaysNothingOfTheOtherShortcuts)
{
    hotKeys.take(kLocalOCR);
    registerHotKeys(1);
    EXPECT_EQ(rows().size(), 4);
}

TEST_F(MenuBarContentTest, EachRowDoesWhatItSays)
{
    choose(QStringLiteral("打开 Tessary"));
    EXPECT_TRUE(windows.isVisible);
    choose(QStringLiteral("打开 Tessary"));
    EXPECT_FALSE(windows.isVisible);
    choose(QStringLiteral("设置…"));
    EXPECT_EQ(windows.settingsShown, 1);
    EXPECT_EQ(quits, 0);
    choose(QStringLiteral("退出 Tessary"));
    EXPECT_EQ(quits, 1);
}

TEST_F(MenuBarContentTest, TheShortcutsOfItsRowsAnswerWhileItIsOpen)
{
    openMenu();
    QTest::keyClick(&content.menu(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(windows.settingsShown, 1);
    EXPECT_FALSE(content.menu().isVisible());
    openMenu();
    QTest::keyClick(&content.menu(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quits, 1);
    EXPECT_FALSE(content.menu().isVisible());
}

TEST_F(MenuBarContentTest, OtherKeysDoWhatTheyDoInAnyMenu)
{
    openMenu();
    QTest::keyClick(&content.menu(), Qt::Key_Q);
    QTest::keyClick(&content.menu(), Qt::Key_Comma);
    EXPECT_TRUE(content.menu().isVisible());
    QTest::keyClick(&content.menu(), Qt::Key_Down);
    QTest::keyClick(&content.menu(), Qt::Key_Return);
    EXPECT_TRUE(windows.isVisible);
    EXPECT_EQ(windows.settingsShown + quits, 0);
}

} // namespace
} // namespace tessary
