#include "platform/testing/FakeClock.h"
#include "tests/session/x11/PasteFixture.h"

#include <csignal>

#include <xcb/xtest.h>

namespace tessary {
namespace {

using ClipboardService::Outcome;
using testing::await;
using testing::eventually;
using testing::PasteTarget;
using Kind = PasteTarget::Kind;

/// A program and the layouts with which it is pasted into.
struct Combination {
    Kind kind;
    QStringList layout;
    std::string name;
};

class PasteIntoTest : public testing::PasteFixture, public ::testing::WithParamInterface<Combination> {};

TEST_P(PasteIntoTest, TheTextArrivesOnceAndNowhereElse)
{
    setLayout(GetParam().layout);
    PasteTarget& target = openBehindAnother(GetParam().kind);
    EXPECT_EQ(paste(QStringLiteral("Grüße 世界 %v")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("Grüße 世界 %v")));
    EXPECT_TRUE(isInFront(target));
    EXPECT_EQ(panel().text(), QString());
}

std::vector<Combination> combinations()
{
    const std::vector<std::pair<Kind, std::string>> kinds{{Kind::Gtk3, "Gtk3"},
                                                          {Kind::Gtk4, "Gtk4"},
                                                          {Kind::Qt, "Qt"},
                                                          {Kind::Xterm, "Xterm"},
                                                          {Kind::Vte, "Vte"}};
    std::vector<Combination> all;
    for (const auto& [kind, kindName] : kinds) {
        for (const char* layout : {"us", "de", "ru"})
            all.push_back({kind, {QLatin1String(layout)}, kindName + "_" + layout});
        all.push_back({kind, {QStringLiteral("us"), QStringLiteral("dvorak")}, kindName + "_dvorak"});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Clients, PasteIntoTest, ::testing::ValuesIn(combinations()),
                         [](const auto& one) { return one.param.name; });

class PasteBackSessionTest : public testing::PasteFixture {
protected:
    /// Presses the menu key, which setLayout() has made to switch. Tools would put the layout back.
    static void switchLayout()
    {
        constexpr uint8_t kMenu = 135;
        X11EventLoop keyboard("tessary-keyboard");
        for (const uint8_t kind : {uint8_t{XCB_KEY_PRESS}, uint8_t{XCB_KEY_RELEASE}})
            xcb_test_fake_input(keyboard.connection(), kind, kMenu, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                                0);
        ASSERT_NE(keyboard.atoms().atom("TESSARY_SYNC"), xcb_atom_t{XCB_ATOM_NONE});
    }
};

TEST_F(PasteBackSessionTest, TheSecondOfTwoLayoutsCountsWhileItIsActive)
{
    setLayout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:menu_toggle")});
    for (const Kind kind : {Kind::Gtk3, Kind::Qt, Kind::Xterm}) {
        PasteTarget& target = openBehindAnother(kind);
        EXPECT_EQ(await(keystrokes.pasteKeystroke({})), PasteKeystroke::ControlV);
        switchLayout();
        EXPECT_EQ(await(keystrokes.pasteKeystroke({})), PasteKeystroke::ShiftInsert);
        EXPECT_EQ(paste(QStringLiteral("вставка")), Outcome::Pasted);
        EXPECT_TRUE(arrives(target, QStringLiteral("вставка")));
        switchLayout();
    }
}

TEST_F(PasteBackSessionTest, HeldModifiersDoNotChangeWhatTheKeysMean)
{
    for (const Kind kind : {Kind::Gtk3, Kind::Xterm}) {
        PasteTarget& target = openBehindAnother(kind);
        QString expected;
        for (const char* modifier : {"Super_L", "Alt_L", "Control_L", "Shift_L", "Control_R", "Super_R"}) {
            xdotool({QStringLiteral("keydown"), QLatin1String(modifier)});
            EXPECT_EQ(paste(QLatin1String(modifier)), Outcome::Pasted) << modifier;
            xdotool({QStringLiteral("keyup"), QLatin1String(modifier)});
            expected += QLatin1String(modifier);
            EXPECT_TRUE(arrives(target, expected)) << modifier;
        }
        // Nothing is left pressed.
        xdotool({QStringLiteral("type"), QStringLiteral("x")});
        EXPECT_TRUE(arrives(target, expected + QLatin1Char('x')));
    }
}

TEST_F(PasteBackSessionTest, LocksMakeNoDifference)
{
    for (const Kind kind : {Kind::Gtk3, Kind::Gtk4, Kind::Qt, Kind::Xterm, Kind::Vte}) {
        PasteTarget& target = openBehindAnother(kind);
        QString expected;
        for (const char* lock : {"Caps_Lock", "Num_Lock", "Caps_Lock", "Num_Lock"}) {
            xdotool({QStringLiteral("key"), QLatin1String(lock)});
            EXPECT_EQ(paste(QLatin1String(lock)), Outcome::Pasted);
            expected += QLatin1String(lock);
            EXPECT_TRUE(arrives(target, expected)) << lock << " in client " << int(kind);
        }
    }
}

TEST_F(PasteBackSessionTest, AProgramThatWasClosedGetsNothingAndTheTextIsOnTheClipboard)
{
    PasteTarget& target = openBehindAnother(Kind::Gtk3);
    target.process().kill(SIGKILL);
    EXPECT_EQ(paste(QStringLiteral("kept")), Outcome::Written);
    EXPECT_EQ(xclipSelection("clipboard"), "kept");
}

TEST_F(PasteBackSessionTest, AProgramThatHangsGetsItWhenItGoesOn)
{
    PasteTarget& target = openBehindAnother(Kind::Gtk3);
    target.process().kill(SIGSTOP);
    EXPECT_EQ(paste(QStringLiteral("later")), Outcome::Pasted);
    EXPECT_EQ(target.text(), QString());
    target.process().kill(SIGCONT);
    EXPECT_TRUE(arrives(target, QStringLiteral("later")));
}

TEST_F(PasteBackSessionTest, AMinimisedWindowComesBackAndGetsIt)
{
    PasteTarget& target = openBehindAnother(Kind::Qt);
    xdotool({QStringLiteral("windowminimize"), QStringLiteral("--sync"), QString::number(previous().window)});
    EXPECT_EQ(paste(QStringLiteral("restored")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("restored")));
}

TEST_F(PasteBackSessionTest, NothingIsTypedIntoAnotherWindow)
{
    PasteTarget& target = openBehindAnother(Kind::Gtk3);
    const RunningApplication panel = *workspace.frontmostApplication();
    ASSERT_NE(panel.window, previous().window);
    ASSERT_TRUE(write(QStringLiteral("astray")));
    EXPECT_FALSE(await(keystrokes.send(PasteKeystroke::ControlV, previous())));
    EXPECT_FALSE(await(workspace.isActive(previous())));
    EXPECT_EQ(paste(QStringLiteral("right")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("right")));
}

/// Time stands still while the target is in front and the keys have not been sent.
class PasteInterruptedTest : public testing::PasteFixture {
protected:
    void pasteUntilSettling(PasteTarget& target)
    {
        task = follow(ClipboardService::copyAndPaste(testing::textRecord(QStringLiteral("late")), previous(),
                                                     platform(time)),
                      outcome);
        ASSERT_TRUE(eventually([this] {
            if (time.sleeping() == 1 && !isActive())
                time.advance(ClipboardService::kActivationPollInterval);
            return time.sleeping() == 1 && isActive();
        }));
        // It may have become active only after the last look.
        time.advance(ClipboardService::kActivationPollInterval);
        ASSERT_TRUE(eventually([this] { return time.sleeping() == 1; }));
        ASSERT_TRUE(isInFront(target));
    }
    void goOn()
    {
        time.advance(ClipboardService::kSettleDelay);
        ASSERT_TRUE(eventually([this] { return outcome.has_value(); }));
    }

    tessary::testing::FakeClock time;
    std::optional<Outcome> outcome;

private:
    static QCoro::Task<> follow(QCoro::Task<Outcome> running, std::optional<Outcome>& end)
    {
        end = co_await running;
    }
    bool isActive() { return await(workspace.isActive(previous())); }

    QCoro::Task<> task;
};

TEST_F(PasteInterruptedTest, AProgramThatEndsJustBeforeTheKeysLeavesThemUnsent)
{
    PasteTarget& target = openBehindAnother(Kind::Gtk3);
    pasteUntilSettling(target);
    target.process().kill(SIGKILL);
    ASSERT_TRUE(isInFront(panel()));
    goOn();
    EXPECT_EQ(outcome, Outcome::Written);
    EXPECT_EQ(panel().text(), QString());
    EXPECT_EQ(xclipSelection("clipboard"), "late");
}

TEST_F(PasteInterruptedTest, APersonWhoGoesElsewhereIsNotTypedAt)
{
    PasteTarget& target = openBehindAnother(Kind::Gtk3);
    const RunningApplication elsewhere = *workspace.frontmostApplication();
    pasteUntilSettling(target);
    ASSERT_TRUE(await(workspace.requestActivation(elsewhere)));
    ASSERT_TRUE(isInFront(panel()));
    goOn();
    EXPECT_EQ(outcome, Outcome::Written);
    EXPECT_EQ(panel().text(), QString());
    EXPECT_EQ(target.text(), QString());
}

TEST_F(PasteBackSessionTest, AnotherWindowOfTheProgramInFrontWillDo)
{
    PasteTarget& target = open(Kind::Gtk3, "target");
    RunningApplication sibling = previous();
    sibling.window += 1'000'000; // a window that is none, of the same process
    EXPECT_TRUE(await(workspace.isActive(sibling)));
    EXPECT_FALSE(await(workspace.requestActivation(sibling)));
    RunningApplication stranger = previous();
    stranger.processIdentifier = 1; // the number of the window was given to somebody else
    EXPECT_FALSE(await(workspace.requestActivation(stranger)));
    EXPECT_TRUE(isInFront(target));
}

TEST_F(PasteBackSessionTest, TerminalsAreKnownAsSuch)
{
    open(Kind::Xterm, "one");
    EXPECT_TRUE(previous().isTerminal);
    open(Kind::Vte, "two");
    EXPECT_TRUE(previous().isTerminal);
    open(Kind::Qt, "three");
    EXPECT_FALSE(previous().isTerminal);
}

TEST_F(PasteBackSessionTest, ALongTextArrivesWhole)
{
    PasteTarget& target = openBehindAnother(Kind::Qt);
    const QString text = QString(2'000'000, u'x');
    EXPECT_EQ(paste(text), Outcome::Pasted);
    // The field keeps the first 32767 characters of it.
    EXPECT_TRUE(arrives(target, text.left(32767)));
}

} // namespace
} // namespace tessary
