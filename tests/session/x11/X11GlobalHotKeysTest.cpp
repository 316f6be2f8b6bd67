#include "platform/x11/X11GlobalHotKeys.h"

#include "tests/support/Await.h"

#include <QProcess>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

constexpr quint32 kO = 31;
constexpr quint32 kZ = 6;
constexpr quint32 kSpace = 49;
constexpr quint32 kControlOption = 6144;
constexpr quint32 kCommandShift = 768;
constexpr HotKeyIdentifier kFirst{0x54535259, 1};
constexpr HotKeyIdentifier kSecond{0x54535259, 2};

void xdotool(const QStringList& arguments)
{
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
}

void press(const char* combination)
{
    xdotool({QStringLiteral("key"), QString::fromLatin1(combination)});
}

class X11GlobalHotKeysTest : public ::testing::Test {
protected:
    X11GlobalHotKeysTest()
    {
        hotKeys.setHandler([this](HotKeyIdentifier identifier) { pressed.append(identifier.id); });
    }
    /// Presses a combination that is surely registered; once it came, all earlier presses have.
    void waitForEarlierPresses()
    {
        if (!await(hotKeys.registerHotKey(kZ, kControlOption, {0, 99})))
            FAIL() << "the marker is taken";
        press("ctrl+alt+z");
        ASSERT_TRUE(eventually([this] { return pressed.contains(99U); }));
        pressed.removeAll(99U);
    }

    X11GlobalHotKeys hotKeys;
    QList<quint32> pressed;
};

TEST_F(X11GlobalHotKeysTest, DeliversAPressWithItsIdentifier)
{
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    ASSERT_TRUE(await(hotKeys.registerHotKey(kSpace, kCommandShift, kSecond)));
    press("ctrl+alt+o");
    press("super+shift+space");
    EXPECT_TRUE(eventually([this] { return pressed == QList<quint32>{1, 2}; }));
}

TEST_F(X11GlobalHotKeysTest, DeliversAPressWhateverLocksAreOn)
{
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    qsizetype expected = 0;
    for (const char* lock : {"Caps_Lock", "Num_Lock", "Caps_Lock", "Num_Lock"}) {
        press(lock);
        press("ctrl+alt+o");
        ++expected;
        EXPECT_TRUE(eventually([&] { return pressed.size() == expected; })) << lock;
    }
}

TEST_F(X11GlobalHotKeysTest, APressWhileTheKeyboardIsStillFrozenCounts)
{
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    const QString combination = QStringLiteral("ctrl+alt+o"); // nobody releases the keyboard after it
    xdotool({QStringLiteral("key"), combination, QStringLiteral("sleep"), QStringLiteral("0.25"),
             QStringLiteral("key"), combination});
    waitForEarlierPresses();
    EXPECT_EQ(pressed, (QList<quint32>{1, 1}));
}

TEST_F(X11GlobalHotKeysTest, OtherModifiersAreAnotherCombination)
{
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    press("ctrl+o");
    press("ctrl+alt+shift+o");
    waitForEarlierPresses();
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(X11GlobalHotKeysTest, AHeldKeyIsOnePress)
{
    xdotool({QStringLiteral("keyup"), QStringLiteral("o")});
    QProcess::execute(QStringLiteral("xset"), {QStringLiteral("r"), QStringLiteral("rate"),
                                               QStringLiteral("200"), QStringLiteral("50")});
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl+alt+o")});
    // As long as it takes for the server to repeat the key many times.
    xdotool({QStringLiteral("sleep"), QStringLiteral("1")});
    xdotool({QStringLiteral("keyup"), QStringLiteral("ctrl+alt+o")});
    waitForEarlierPresses();
    EXPECT_EQ(pressed, QList<quint32>{1});
    press("ctrl+alt+o");
    EXPECT_TRUE(eventually([this] { return pressed.size() == 2; }));
}

TEST_F(X11GlobalHotKeysTest, ACombinationThatAnotherProgramHoldsIsRefused)
{
    {
        X11GlobalHotKeys other;
        ASSERT_TRUE(await(other.registerHotKey(kO, kControlOption, kFirst)));
        EXPECT_EQ(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)), std::nullopt);
    }
    EXPECT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
}

TEST_F(X11GlobalHotKeysTest, ACombinationHeldInPartIsRefusedAndLeftAlone)
{
    X11EventLoop other("tessary-other");
    xcb_connection_t* x = other.connection();
    const auto keycode = xcb_keycode_t{24 + 8}; // O
    const auto mask = static_cast<uint16_t>(XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK);
    xcb_grab_key(x, 0, other.root(), mask, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    ASSERT_NE(other.atoms().atom("TESSARY_SYNC"), xcb_atom_t{XCB_ATOM_NONE});
    EXPECT_EQ(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)), std::nullopt);
    // The variants that were free are free again.
    X11GlobalHotKeys third;
    xcb_ungrab_key(x, keycode, other.root(), mask);
    xcb_flush(x);
    EXPECT_TRUE(
        eventually([&] { return await(third.registerHotKey(kO, kControlOption, kFirst)).has_value(); }));
}

TEST_F(X11GlobalHotKeysTest, TheSameCombinationTwiceIsRefused)
{
    const auto reference = await(hotKeys.registerHotKey(kO, kControlOption, kFirst));
    ASSERT_TRUE(reference);
    EXPECT_EQ(await(hotKeys.registerHotKey(kO, kControlOption, kSecond)), std::nullopt);
    hotKeys.unregister(*reference);
    EXPECT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kSecond)));
    press("ctrl+alt+o");
    EXPECT_TRUE(eventually([this] { return pressed == QList<quint32>{2}; }));
}

TEST_F(X11GlobalHotKeysTest, AnUnregisteredCombinationIsSilentAndFree)
{
    const auto reference = await(hotKeys.registerHotKey(kO, kControlOption, kFirst));
    ASSERT_TRUE(reference);
    hotKeys.unregister(*reference);
    hotKeys.unregister(*reference);
    press("ctrl+alt+o");
    waitForEarlierPresses();
    EXPECT_TRUE(pressed.isEmpty());
    X11GlobalHotKeys other;
    EXPECT_TRUE(await(other.registerHotKey(kO, kControlOption, kFirst)));
}

TEST_F(X11GlobalHotKeysTest, ACodeOfNoKeyIsRefused)
{
    EXPECT_EQ(await(hotKeys.registerHotKey(0x7F, kControlOption, kFirst)), std::nullopt);
}

TEST_F(X11GlobalHotKeysTest, FindsAltWhereverTheServerPutIt)
{
    ASSERT_TRUE(await(hotKeys.registerHotKey(kO, kControlOption, kFirst)));
    const auto xmodmap = [](const QStringList& expressions) {
        QStringList arguments;
        for (const QString& expression : expressions)
            arguments << QStringLiteral("-e") << expression;
        return QProcess::execute(QStringLiteral("xmodmap"), arguments);
    };
    ASSERT_EQ(xmodmap({QStringLiteral("clear mod1"), QStringLiteral("clear mod3"),
                       QStringLiteral("add mod3 = Alt_L Alt_R")}),
              0);
    press("ctrl+alt+o");
    EXPECT_TRUE(eventually([this] { return pressed == QList<quint32>{1}; }));
    ASSERT_EQ(xmodmap({QStringLiteral("clear mod3"), QStringLiteral("add mod1 = Alt_L Alt_R")}), 0);
    press("ctrl+alt+o");
    EXPECT_TRUE(eventually([this] { return pressed.size() == 2; }));
}

} // namespace
} // namespace tessary
