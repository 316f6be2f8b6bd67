#include "tests/session/x11/InnerServer.h"
#include "tests/session/x11/PasteFixture.h"

namespace tessary {
namespace {

using ClipboardService::Outcome;
using testing::await;
using testing::PasteTarget;

/// The server comes first, so that all else connects to it.
class FingersOnKeysTest : protected testing::InnerServer, public testing::PasteFixture {
protected:
    void type(const char* key) { outer({QStringLiteral("key"), QLatin1String(key)}); }
};

TEST_F(FingersOnKeysTest, AModifierThatIsHeldIsHeldAgainAfterwardsAndNotStuck)
{
    PasteTarget& target = open(PasteTarget::Kind::Gtk3, "target");
    outer({QStringLiteral("keydown"), QStringLiteral("shift")});
    type("b");
    ASSERT_TRUE(arrives(target, QStringLiteral("B")));
    EXPECT_EQ(paste(QStringLiteral("<1>")), Outcome::Pasted);
    ASSERT_TRUE(arrives(target, QStringLiteral("B<1>")));
    type("c");
    EXPECT_TRUE(arrives(target, QStringLiteral("B<1>C")));
    outer({QStringLiteral("keyup"), QStringLiteral("shift")});
    type("d");
    EXPECT_TRUE(arrives(target, QStringLiteral("B<1>Cd")));
    EXPECT_EQ(paste(QStringLiteral("<2>")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("B<1>Cd<2>")));
    type("e");
    EXPECT_TRUE(arrives(target, QStringLiteral("B<1>Cd<2>e")));
}

TEST_F(FingersOnKeysTest, AHeldControlKeyServesAgainForTheNextPaste)
{
    PasteTarget& target = open(PasteTarget::Kind::Xterm, "target");
    outer({QStringLiteral("keydown"), QStringLiteral("Control_L")});
    EXPECT_EQ(paste(QStringLiteral("<1>")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("<1>")));
    EXPECT_EQ(paste(QStringLiteral("<2>")), Outcome::Pasted);
    EXPECT_TRUE(arrives(target, QStringLiteral("<1><2>")));
    outer({QStringLiteral("keyup"), QStringLiteral("Control_L")});
    type("x");
    EXPECT_TRUE(arrives(target, QStringLiteral("<1><2>x")));
}

class LostServerTest : protected testing::InnerServer, public testing::PasteboardFixture {};

TEST_F(LostServerTest, NothingSucceedsAndNobodyWaits)
{
    X11Workspace workspace(DesktopEntries({}, QStringLiteral("C")), QStringLiteral("ours"));
    X11KeystrokeSender keystrokes;
    ASSERT_TRUE(write(QStringLiteral("before")));
    end();
    EXPECT_FALSE(write(QStringLiteral("after")));
    await(pasteboard->handOver());
    EXPECT_FALSE(await(workspace.requestActivation({})));
    EXPECT_FALSE(await(workspace.isActive({})));
    EXPECT_EQ(await(keystrokes.pasteKeystroke({})), std::nullopt);
    EXPECT_FALSE(await(keystrokes.send(PasteKeystroke::ControlV, {})));
}

} // namespace
} // namespace tessary
