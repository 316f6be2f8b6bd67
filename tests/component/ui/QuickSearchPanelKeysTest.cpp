#include "tests/component/ui/QuickSearchPanelFixture.h"

#include "ui/kit/Banner.h"
#include "ui/quicksearch/ResultList.h"
#include "ui/quicksearch/SearchField.h"

#include <QApplication>
#include <QInputMethodEvent>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

class QuickSearchPanelKeysTest : public testing::QuickSearchPanelFixture {};

TEST_F(QuickSearchPanelKeysTest, ArrowsMoveTheSelectionAndStopAtTheEnds)
{
    addTexts({QStringLiteral("old"), QStringLiteral("new")});
    show();
    EXPECT_EQ(selected(), QStringLiteral("new"));
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), QStringLiteral("new"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), QStringLiteral("old"));
    EXPECT_EQ(part<ResultList>().currentIndex().row(), 1);
}

TEST_F(QuickSearchPanelKeysTest, SpacePreviewsAfterAnArrowAndTypesAfterALetter)
{
    addTexts({QStringLiteral("a b"), QStringLiteral("c")});
    show();
    press(Qt::Key_Space);
    EXPECT_TRUE(windows.previewed.isEmpty());
    part<SearchField>().clear();
    press(Qt::Key_Down);
    EXPECT_TRUE(controller->isNavigatingResults());
    press(Qt::Key_Space);
    EXPECT_EQ(windows.previewed, QStringList{QStringLiteral("a b")});
    EXPECT_EQ(part<SearchField>().text(), QString());
    type(QStringLiteral("a"));
    EXPECT_FALSE(controller->isNavigatingResults());
    press(Qt::Key_Space);
    type(QStringLiteral("b"));
    EXPECT_EQ(part<SearchField>().text(), QStringLiteral("a b"));
    EXPECT_EQ(windows.previewed.size(), 1);
}

TEST_F(QuickSearchPanelKeysTest, AnInputMethodsTextEndsTheNavigationToo)
{
    addTexts({QStringLiteral("x"), QStringLiteral("y")});
    show();
    press(Qt::Key_Down);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("周"));
    QApplication::sendEvent(&part<SearchField>(), &commit);
    EXPECT_FALSE(controller->isNavigatingResults());
}

TEST_F(QuickSearchPanelKeysTest, AnInputMethodThatComposesKeepsItsKeys)
{
    addTexts({QStringLiteral("x"), QStringLiteral("y")});
    show();
    QInputMethodEvent composing(QStringLiteral("zhou"), {});
    QApplication::sendEvent(&part<SearchField>(), &composing);
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_EQ(controller->model().selectedIndex(), 0);
    EXPECT_TRUE(controller->isVisible());
    QInputMethodEvent ended;
    QApplication::sendEvent(&part<SearchField>(), &ended);
    press(Qt::Key_Down);
    EXPECT_EQ(controller->model().selectedIndex(), 1);
}

TEST_F(QuickSearchPanelKeysTest, ReturnPastesIntoTheProgramThatWasInFront)
{
    addTexts({QStringLiteral("text")});
    permissions.setState({true, true, true});
    runtime.refreshPermissions();
    ASSERT_TRUE(eventually([&] { return runtime.accessibilityPermissionGranted(); }));
    workspace.activate({QStringLiteral("editor"), QStringLiteral("editor"), std::nullopt, 1, 7});
    ASSERT_TRUE(eventually([&] { return workspace.frontmostApplication().has_value(); }));
    show();
    press(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return !controller->isVisible(); }));
    EXPECT_TRUE(eventually([&] {
        clock.advance(50ms);
        return !keystrokes.sent().isEmpty();
    }));
}

TEST_F(QuickSearchPanelKeysTest, WithoutPermissionReturnCopiesAndSaysHowToPaste)
{
    addTexts({QStringLiteral("text")});
    show();
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(eventually([&] { return runtime.lastError().has_value(); }));
    EXPECT_EQ(part<Banner>().message(),
              QStringLiteral("内容已复制。授予辅助功能权限后可自动粘贴；现在请切换到目标 App 并按 ⌘ V。"));
    EXPECT_TRUE(keystrokes.sent().isEmpty());
}

TEST_F(QuickSearchPanelKeysTest, ReturnRightAfterTypingUsesWhatWasTyped)
{
    addTexts({QStringLiteral("apple"), QStringLiteral("banana")});
    show();
    const qint64 before = pasteboard.changeCount();
    type(QStringLiteral("app"));
    press(Qt::Key_C, Qt::ControlModifier); // the pause after typing has not passed
    press(Qt::Key_C, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return pasteboard.changeCount() > before; }));
    const auto copied = await(pasteboard.data(pasteboard.changeCount(), PasteboardType::Text));
    EXPECT_EQ(copied, QByteArray("apple"));
}

TEST_F(QuickSearchPanelKeysTest, TypingSelectsTheFirstResult)
{
    addTexts({QStringLiteral("ab 1"), QStringLiteral("ab 2"), QStringLiteral("c")});
    show();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    type(QStringLiteral("ab"));
    clock.advance(180ms);
    ASSERT_TRUE(eventually([&] { return results().size() == 2; }));
    EXPECT_EQ(selected(), QStringLiteral("ab 2"));
}

TEST_F(QuickSearchPanelKeysTest, ControlCCopiesWithoutPasting)
{
    addTexts({QStringLiteral("text")});
    show();
    const qint64 before = pasteboard.changeCount();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return pasteboard.changeCount() > before; }));
    EXPECT_TRUE(keystrokes.sent().isEmpty());
    EXPECT_EQ(runtime.lastError(), std::nullopt);
}

TEST_F(QuickSearchPanelKeysTest, FavouritePinPreviewRevealAndTrashHaveTheirKeys)
{
    addTexts({QStringLiteral("text")});
    show();
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return stored(QStringLiteral("text")).isFavorite; }));
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return stored(QStringLiteral("text")).isPinned; }));
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(windows.previewed, QStringList{QStringLiteral("text")});
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(controller->isVisible());
    press(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return results().isEmpty(); }));
}

TEST_F(QuickSearchPanelKeysTest, WithoutASelectionTheKeysAreConsumedAndDoNothing)
{
    show();
    press(Qt::Key_Y, Qt::ControlModifier);
    press(Qt::Key_O, Qt::ControlModifier);
    press(Qt::Key_D, Qt::ControlModifier);
    press(Qt::Key_Return);
    EXPECT_TRUE(windows.previewed.isEmpty());
    EXPECT_TRUE(controller->isVisible());
    EXPECT_EQ(part<SearchField>().text(), QString());
}

TEST_F(QuickSearchPanelKeysTest, LettersOfTheMapTypeWithoutControl)
{
    show();
    type(QStringLiteral("copyd"));
    EXPECT_EQ(part<SearchField>().text(), QStringLiteral("copyd"));
}

TEST_F(QuickSearchPanelKeysTest, WhatIsTypedGoesIntoTheFieldWhateverHasTheFocus)
{
    show();
    part<ResultList>().setFocus(Qt::TabFocusReason);
    type(QStringLiteral("abc"));
    EXPECT_EQ(part<SearchField>().text(), QStringLiteral("abc"));
}

} // namespace
} // namespace tessary
