#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

namespace {

class DockIconTest : public PanelSession {
protected:
    /// Opens the panel, and from it an item in a window of its own.
    void preview()
    {
        prepare({textRecord(QStringLiteral("item"))});
        startWithPanel();
        ASSERT_TRUE(opensPanel());
        ASSERT_TRUE(lists(1));
        isPanelLeftOut = screen.isLeftOut(screen.visible(kPanel)->id);
        press("ctrl+y");
        ASSERT_TRUE(eventually([this] { return screen.visible("item").has_value(); }));
    }

    bool isPanelLeftOut = false;
};

TEST_F(DockIconTest, WithoutItOurWindowsAreNotInTaskbars)
{
    preview();
    EXPECT_TRUE(eventually([this] { return screen.isLeftOut(screen.visible("item")->id); }));
    EXPECT_TRUE(isPanelLeftOut);
    EXPECT_TRUE(isInFront("item"));
}

TEST_F(DockIconTest, WithItOurWindowsAreInTaskbarsButNeverThePanel)
{
    set(QStringLiteral("showDockIcon=true"));
    preview();
    ASSERT_TRUE(isInFront("item"));
    EXPECT_FALSE(screen.isLeftOut(screen.visible("item")->id));
    EXPECT_TRUE(isPanelLeftOut);
}

} // namespace

} // namespace tessary::testing
