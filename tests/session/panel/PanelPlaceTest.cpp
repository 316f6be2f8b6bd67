#include "tests/session/panel/PanelSession.h"

#include <QProcess>

namespace tessary::testing {

namespace {

constexpr QSize kPanelSize(780, 540);

/// A screen that two monitors share side by side.
class PanelPlaceTest : public PanelSession {
protected:
    ~PanelPlaceTest() override
    {
        if (!m_hasRight)
            addRight();
    }
    static void xrandr(const QStringList& arguments)
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
    }
    void addRight()
    {
        xrandr({QStringLiteral("--setmonitor"), QStringLiteral("right"),
                QStringLiteral("900/225x1000/250+900+0"), QStringLiteral("none")});
        m_hasRight = true;
    }
    void removeRight()
    {
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("right")});
        m_hasRight = false;
    }
    static void movePointer(int x, int y)
    {
        xdotool({QStringLiteral("mousemove"), QString::number(x), QString::number(y)});
    }
    /// The panel at its place on a monitor of that area.
    static QRect on(const QRect& area)
    {
        constexpr double kFromTop = 0.12;
        return {QPoint(area.x() + (area.width() - kPanelSize.width()) / 2,
                       area.y() + static_cast<int>(kFromTop * area.height())),
                kPanelSize};
    }
    ::testing::AssertionResult isAt(const QRect& place)
    {
        const auto now = [this] {
            const auto panel = screen.visible(kPanel);
            return panel ? panel->geometry : QRect();
        };
        if (eventually([&] { return now() == place; }, std::chrono::seconds(5)))
            return ::testing::AssertionSuccess();
        const QRect found = now();
        return ::testing::AssertionFailure()
               << found.width() << 'x' << found.height() << '+' << found.x() << '+' << found.y();
    }

    const QRect left{0, 0, 900, 1000};
    const QRect right{900, 0, 900, 1000};

private:
    bool m_hasRight = true;
};

TEST_F(PanelPlaceTest, ItOpensOnTheMonitorUnderThePointer)
{
    startWithPanel();
    for (const QRect& monitor : {right, left, right}) {
        movePointer(monitor.center().x(), monitor.bottom() - 20);
        ASSERT_TRUE(opensPanel());
        EXPECT_TRUE(isAt(on(monitor)));
        press("Escape");
        ASSERT_TRUE(goes());
    }
}

TEST_F(PanelPlaceTest, AMonitorThatIsGonePutsItOnTheOther)
{
    startWithPanel();
    movePointer(right.center().x(), 900);
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(isAt(on(right)));
    press("Escape");
    ASSERT_TRUE(goes());
    removeRight();
    ASSERT_TRUE(opensPanel()); // the pointer is nowhere now
    EXPECT_TRUE(isAt(on(left)));
}

TEST_F(PanelPlaceTest, AMonitorMayGoWhileThePanelIsOnIt)
{
    startWithPanel();
    movePointer(right.center().x(), 900);
    ASSERT_TRUE(opensPanel());
    removeRight();
    press("Escape");
    ASSERT_TRUE(goes());
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(isAt(on(left)));
    type(QStringLiteral("typing"));
    EXPECT_EQ(cutField(), QStringLiteral("typing"));
}

TEST_F(PanelPlaceTest, AMonitorThatComesBackIsUsedAgain)
{
    startWithPanel();
    movePointer(right.center().x(), 900);
    removeRight();
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(isAt(on(left)));
    press("Escape");
    ASSERT_TRUE(goes());
    addRight();
    movePointer(right.center().x(), 890);
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(isAt(on(right)));
}

} // namespace

} // namespace tessary::testing
