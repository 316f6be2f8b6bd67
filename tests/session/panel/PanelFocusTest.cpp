#include "tests/session/panel/PanelSession.h"

namespace tessary::testing {

namespace {

/// A target at the upper left corner, where the panel never is.
class PanelFocusTest : public PanelSession {
protected:
    void openTarget()
    {
        open(PasteTarget::Kind::Gtk3);
        xdotool({QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^target$"),
                 QStringLiteral("windowmove"), QStringLiteral("0"), QStringLiteral("0")});
        ASSERT_TRUE(eventually([this] {
            const auto window = screen.visible("target");
            return window && window->geometry.x() < 20 && window->geometry.y() < 40;
        }));
    }
    void clickTarget()
    {
        const QPoint place = screen.visible("target")->geometry.center();
        SCOPED_TRACE(::testing::Message() << "at " << place.x() << ", " << place.y());
        clickAt(place);
        EXPECT_TRUE(isInFront("target"));
    }
};

TEST_F(PanelFocusTest, EscapeHidesItAndTheProgramBeforeHasTheKeyboard)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    EXPECT_FALSE(screen.hasKeyboard(screen.visible("target")->id));
    press("Escape");
    EXPECT_TRUE(goes());
    EXPECT_TRUE(isInFront("target"));
}

TEST_F(PanelFocusTest, AClickElsewhereHidesIt)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    clickTarget();
    EXPECT_TRUE(goes());
}

TEST_F(PanelFocusTest, AClickOnAnEmptyPartChangesNothing)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    const QPoint place(panelGeometry().center().x(), panelGeometry().bottom() - 60);
    xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
             QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("sleep"), QStringLiteral("0.1"),
             QStringLiteral("mouseup"), QStringLiteral("1")});
    type(QStringLiteral("typing on"));
    EXPECT_EQ(cutField(), QStringLiteral("typing on"));
}

TEST_F(PanelFocusTest, DraggingAnEmptyPartMovesItAndItKeepsTheKeyboard)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    const QRect before = panelGeometry();
    const QPoint place(before.center().x(), before.bottom() - 60);
    QStringList drag{QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                     QStringLiteral("mousedown"), QStringLiteral("1")};
    for (int step = 0; step < 10; ++step)
        drag += {QStringLiteral("mousemove_relative"),
                 QStringLiteral("--"),
                 QStringLiteral("8"),
                 QStringLiteral("-4"),
                 QStringLiteral("sleep"),
                 QStringLiteral("0.02")};
    xdotool(drag + QStringList{QStringLiteral("mouseup"), QStringLiteral("1")});
    EXPECT_TRUE(eventually([&] { return isShown() && panelGeometry().x() > before.x() + 30; }));
    ASSERT_TRUE(comes());
    type(QStringLiteral("typing on"));
    EXPECT_EQ(cutField(), QStringLiteral("typing on"));
    clickTarget(); // and it still goes when it should
    EXPECT_TRUE(goes());
}

TEST_F(PanelFocusTest, APinnedOneStaysWhenSomethingElseIsClicked)
{
    set(QStringLiteral("quickSearchPinned=true"));
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    clickTarget();
    type(QStringLiteral("into the target"));
    EXPECT_TRUE(eventually([this] { return isShown(); }));
    const QRect panel = panelGeometry();
    clickAt({panel.center().x(), panel.bottom() - 60}); // in the lower part, on no button
    ASSERT_TRUE(comes());
    type(QStringLiteral("into the field"));
    EXPECT_EQ(cutField(), QStringLiteral("into the field"));
    press("Escape");
    EXPECT_TRUE(goes());
}

TEST_F(PanelFocusTest, TheSearchTextIsGoneTheNextTime)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    type(QStringLiteral("first"));
    press("Escape");
    ASSERT_TRUE(goes());
    ASSERT_TRUE(opensPanel());
    type(QStringLiteral("second"));
    EXPECT_EQ(cutField(), QStringLiteral("second"));
}

TEST_F(PanelFocusTest, AWindowThatComesUpHidesIt)
{
    startWithPanel();
    openTarget();
    ASSERT_TRUE(opensPanel());
    open(PasteTarget::Kind::Qt, "newcomer");
    EXPECT_TRUE(goes());
    EXPECT_TRUE(isInFront("newcomer"));
}

} // namespace

} // namespace tessary::testing
