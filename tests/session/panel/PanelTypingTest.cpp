#include "tests/session/panel/PanelSession.h"

namespace tessary::testing {

namespace {

/// What is typed before the panel is on the screen.
class PanelTypingTest : public PanelSession {};

TEST_F(PanelTypingTest, WhatIsTypedRightAfterTheShortcutIsInTheFieldWhole)
{
    constexpr int kTimes = 20;
    startWithPanel();
    open(PasteTarget::Kind::Gtk3);
    QString letters = QStringLiteral("abcdefghij");
    for (int time = 0; time < kTimes; ++time) {
        letters = letters.mid(1) + letters.front() + QString(time % 2, u'z');
        xdotool({QStringLiteral("key"), QLatin1String(kShortcut), QStringLiteral("type"),
                 QStringLiteral("--delay"), QStringLiteral("0"), letters});
        ASSERT_TRUE(comes());
        ASSERT_EQ(cutField(), letters) << "time " << time;
        press("Escape");
        ASSERT_TRUE(goes());
        ASSERT_TRUE(isInFront("target"));
    }
}

TEST_F(PanelTypingTest, LettersPressedTogetherWithTheShortcutAreInTheField)
{
    constexpr int kTimes = 20;
    startWithPanel();
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    for (int time = 0; time < kTimes; ++time) {
        xdotool({QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0"),
                 QLatin1String(kShortcut), QStringLiteral("o"), QStringLiteral("n"), QStringLiteral("e"),
                 time % 2 == 0 ? QStringLiteral("x") : QStringLiteral("y")});
        ASSERT_TRUE(comes());
        ASSERT_EQ(cutField(), time % 2 == 0 ? QStringLiteral("onex") : QStringLiteral("oney"))
            << "time " << time;
        press("Escape");
        ASSERT_TRUE(goes());
        ASSERT_TRUE(isInFront("target"));
    }
    EXPECT_EQ(target.text(), QString());
}

} // namespace

} // namespace tessary::testing
