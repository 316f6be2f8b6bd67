#include "tests/session/panel/PanelSession.h"

namespace tessary::testing {

namespace {

class PanelShortcutTest : public PanelSession {
protected:
    /// The panel has been shown once and is followed from now on.
    void SetUp() override
    {
        startWithPanel();
        open(PasteTarget::Kind::Gtk3);
        ASSERT_TRUE(opensPanel());
        screen.follow(screen.visible(kPanel)->id);
        press("Escape");
        ASSERT_TRUE(goes());
        hiddenBefore = screen.changes().hidden;
    }
    /// Waits until the panel came and went so often.
    ::testing::AssertionResult toggles(int shown, int hidden)
    {
        const auto changes = [&] {
            const ScreenWindows::Changes all = screen.changes();
            return std::pair(all.shown, all.hidden - hiddenBefore);
        };
        if (eventually([&] { return changes() == std::pair(shown, hidden); }))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << "shown " << changes().first << ", hidden " << changes().second;
    }

    int hiddenBefore = 0;
};

TEST_F(PanelShortcutTest, HoldingItTogglesOnce)
{
    xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl"), QStringLiteral("keydown"),
             QStringLiteral("alt"), QStringLiteral("keydown"), QStringLiteral("space"),
             QStringLiteral("sleep"), QStringLiteral("1.5"), QStringLiteral("keyup"), QStringLiteral("space"),
             QStringLiteral("keyup"), QStringLiteral("alt"), QStringLiteral("keyup"),
             QStringLiteral("ctrl")});
    ASSERT_TRUE(comes());
    EXPECT_TRUE(toggles(1, 0));
    pressShortcut(); // by now nothing of the holding is left over
    EXPECT_TRUE(toggles(1, 1));
}

TEST_F(PanelShortcutTest, PressingItTwiceShowsAndHides)
{
    xdotool({QStringLiteral("key"), QLatin1String(kShortcut), QLatin1String(kShortcut)});
    EXPECT_TRUE(toggles(1, 1));
    EXPECT_TRUE(isInFront("target"));
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(toggles(2, 1));
}

TEST_F(PanelShortcutTest, PressingItThreeTimesLeavesItThere)
{
    const QString shortcut = QLatin1String(kShortcut);
    xdotool({QStringLiteral("key"), shortcut, shortcut, shortcut});
    EXPECT_TRUE(toggles(2, 1));
    EXPECT_TRUE(comes());
    pressShortcut();
    EXPECT_TRUE(toggles(2, 2));
}

TEST_F(PanelShortcutTest, LockKeysDoNotMatter)
{
    xdotool({QStringLiteral("key"), QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")});
    EXPECT_TRUE(opensPanel());
    xdotool({QStringLiteral("key"), QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")});
}

} // namespace

} // namespace tessary::testing
