#include "tests/session/panel/PanelSession.h"

namespace tessary::testing {

namespace {

/// The settings window of the real program, with real keys.
class SettingsWindowTest : public PanelSession {
protected:
    void open()
    {
        startWithPanel();
        const auto verb = run({QStringLiteral("settings")});
        ASSERT_EQ(verb->exitCode(), 0);
        ASSERT_TRUE(isInFront(kTitle));
    }
    static void tab(int times)
    {
        for (int i = 0; i < times; ++i)
            press("Tab");
    }
    /// From the tabs, which the window begins with, to the recorder of the first shortcut.
    static void goToFirstRecorder() { tab(kTabsToRecorder); }
    /// Opens the list of programs by the mouse, and from it by the keyboard what lets point at a window.
    void pickFromList()
    {
        clickAt(screen.visible(kTitle)->geometry.topLeft() + QPoint(663, 319));
        type(QStringLiteral("zzzz")); // no program is called so: the next stop is the button
        press("Tab");
        press("space");
    }
    [[nodiscard]] QString stored() { return QString::fromUtf8(readFile(settingsPath())); }
    [[nodiscard]] bool stores(const char* line)
    {
        return eventually([&] { return stored().contains(QLatin1String(line)); });
    }

    static constexpr const char* kTitle = "Tessary 设置";
    static constexpr int kTabsToRecorder = 6;
};

TEST_F(SettingsWindowTest, ASwitchLandsInTheSettingsFile)
{
    open();
    press("ctrl+3"); // recognition
    tab(3);
    press("space");
    EXPECT_TRUE(stores("accurateOCR=false"));
}

/// openbox holds Alt+Space: without the keyboard taken it would open its menu.
TEST_F(SettingsWindowTest, ACombinationThatTheWindowManagerHoldsIsRecordedAndMarked)
{
    open();
    goToFirstRecorder();
    press("space");
    press("alt+space");
    EXPECT_TRUE(stores("quickSearchShortcut=v2|49|2048|Space"));
    EXPECT_TRUE(tessary().printed(QStringLiteral("global shortcuts that another program holds: 1")));
    EXPECT_TRUE(isInFront(kTitle));
}

TEST_F(SettingsWindowTest, OurOwnShortcutsDoNothingWhileRecordingAndWorkAfterwards)
{
    open();
    goToFirstRecorder();
    press("space");
    pressShortcut(); // the very one that opens the panel
    EXPECT_TRUE(isInFront(kTitle));
    EXPECT_FALSE(isShown());
    press("space");
    press("super+shift+k");
    ASSERT_TRUE(stores("quickSearchShortcut=v2|40|768|K"));
    press("super+shift+k");
    EXPECT_TRUE(comes());
}

TEST_F(SettingsWindowTest, EscapeEndsRecordingAndThenClosesTheWindow)
{
    open();
    goToFirstRecorder();
    press("space");
    press("Escape");
    press("k"); // no recorder sees it
    EXPECT_TRUE(isInFront(kTitle));
    EXPECT_TRUE(stores("quickSearchShortcut=v2|49|6144|Space"));
    press("Escape");
    EXPECT_TRUE(eventually([this] { return !screen.visible(kTitle); }));
    const auto verb = run({QStringLiteral("settings")});
    EXPECT_EQ(verb->exitCode(), 0);
    EXPECT_TRUE(isInFront(kTitle));
}

TEST_F(SettingsWindowTest, AWindowIsPickedByAClickAndCalledAsItsItemsAre)
{
    PanelSession::open(PasteTarget::Kind::Xterm);
    open();
    press("ctrl+4");
    const QRect terminal = screen.visible("target")->geometry;
    pickFromList();
    ASSERT_TRUE(eventually([this] { return !screen.visible(kTitle); }));
    clickAt(terminal.center());
    EXPECT_TRUE(isInFront(kTitle));
    EXPECT_TRUE(stores("excludedBundleIdentifiers="));
    EXPECT_TRUE(stored().contains(QLatin1String("xterm"), Qt::CaseInsensitive)) << qPrintable(stored());
}

} // namespace

} // namespace tessary::testing
