#include "tests/session/SessionTest.h"

#include <QImage>

#include <csignal>

namespace tessary::testing {

namespace {

/// The icon in the panel, with real panels: one with a status-notifier host and one that only embeds
/// windows. Both stand at the upper left corner, 28 pixels high, with the icon at their left end.
class PanelIconTest : public SessionTest {
protected:
    ChildProcess& startPanel()
    {
        return program(QStringLiteral("xfce4-panel"),
                       {QStringLiteral("--disable-wm-check"), QStringLiteral("--sm-client-disable")});
    }
    ChildProcess& startEmbeddingTray()
    {
        return program(QStringLiteral("trayer"),
                       {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
                        QStringLiteral("left"), QStringLiteral("--widthtype"), QStringLiteral("pixel"),
                        QStringLiteral("--width"), QStringLiteral("300"), QStringLiteral("--height"),
                        QStringLiteral("28")});
    }
    /// What the command wrote.
    static QString outputOf(const QString& name, const QStringList& arguments)
    {
        ChildProcess command(name, arguments);
        (void)command.exitCode();
        return command.output();
    }
    static QString call(const QString& service, const QStringList& what)
    {
        return outputOf(QStringLiteral("gdbus"),
                        QStringList{QStringLiteral("call"), QStringLiteral("--session"),
                                    QStringLiteral("--dest"), service, QStringLiteral("--object-path")} +
                            what);
    }
    /// The bus address of our item; empty while none is registered.
    static QString item()
    {
        const QString items = call(QStringLiteral("org.kde.StatusNotifierWatcher"),
                                   {QStringLiteral("/StatusNotifierWatcher"), QStringLiteral("--method"),
                                    QStringLiteral("org.freedesktop.DBus.Properties.Get"),
                                    QStringLiteral("org.kde.StatusNotifierWatcher"),
                                    QStringLiteral("RegisteredStatusNotifierItems")});
        return items.section(u'\'', 1, 1).section(u'/', 0, 0);
    }
    /// Whether the mark is on the screen, in the colour for a panel whose colours are not known.
    bool isDrawn() const
    {
        const QString path = scratch(QStringLiteral("screen.png"));
        (void)outputOf(QStringLiteral("import"),
                       {QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("-crop"),
                        QStringLiteral("40x28+0+0"), QStringLiteral("+repage"), path});
        const QImage corner(path);
        int marked = 0;
        for (int y = 0; y < corner.height(); ++y) {
            for (int x = 0; x < corner.width(); ++x)
                marked += corner.pixel(x, y) == qRgb(0x3D, 0x78, 0xF0) ? 1 : 0;
        }
        return marked > 20;
    }
    ::testing::AssertionResult isShown()
    {
        if (eventually([this] { return isDrawn(); }))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "the mark is not on the screen";
    }
    static void clickIcon(const QString& button)
    {
        (void)outputOf(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("12"),
                                                   QStringLiteral("14"), QStringLiteral("click"), button});
    }
    static void press(const QString& keys)
    {
        (void)outputOf(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
    }
    /// How many windows without a frame are on the screen, as menus are.
    static int unmanagedWindows()
    {
        const QStringList windows =
            outputOf(QStringLiteral("xdotool"),
                     {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--maxdepth"),
                      QStringLiteral("1"), QStringLiteral("--name"), QStringLiteral("")})
                .split(u'\n', Qt::SkipEmptyParts);
        return static_cast<int>(windows.size());
    }
    /// Brings up the menu, which somebody else may draw.
    static void openMenu()
    {
        const int before = unmanagedWindows();
        clickIcon(QStringLiteral("3"));
        ASSERT_TRUE(eventually([&] { return unmanagedWindows() > before; })) << "no menu came";
    }
    bool asksForThePanel()
    {
        return eventually([this] {
            return tessary().output().contains(QLatin1String("quick-search panel was asked for")) ||
                   !outputOf(QStringLiteral("xdotool"),
                             {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                              QStringLiteral("--name"), QStringLiteral("^Tessary$")})
                        .isEmpty();
        });
    }
    QString menu() const
    {
        return call(item(), {QStringLiteral("/Menu"), QStringLiteral("--method"),
                             QStringLiteral("com.canonical.dbusmenu.GetLayout"), QStringLiteral("0"),
                             QStringLiteral("--"), QStringLiteral("-1"), QStringLiteral("[]")});
    }
};

TEST_F(PanelIconTest, IsInThePanelAndAClickOpensTessary)
{
    startPanel();
    start();
    ASSERT_TRUE(isShown());
    EXPECT_FALSE(item().isEmpty());
    clickIcon(QStringLiteral("1"));
    EXPECT_TRUE(asksForThePanel());
}

TEST_F(PanelIconTest, QuitInTheMenuEndsTheProgramWell)
{
    startPanel();
    start();
    ASSERT_TRUE(isShown());
    openMenu();
    press(QStringLiteral("Up")); // the last row
    press(QStringLiteral("Return"));
    EXPECT_EQ(tessary().exitCode(), 0);
    EXPECT_TRUE(eventually([] { return item().isEmpty(); }));
}

TEST_F(PanelIconTest, TheMenuWarnsWhileTheWindowManagerHoldsTheShortcut)
{
    startPanel();
    start(); // the window manager of the desktop takes Alt+Space
    ASSERT_TRUE(eventually([] { return !item().isEmpty(); }));
    EXPECT_TRUE(eventually([this] {
        return menu().contains(
            QStringLiteral("'label': <'打开 Tessary 的全局快捷键不可用'>, 'visible': <true>"));
    })) << qPrintable(menu());
}

TEST_F(PanelIconTest, TheMenuDoesNotWarnOfAFreeShortcut)
{
    writeSettings({QStringLiteral("quickSearchShortcut=v2|49|6144|Space")}); // Control and Alt
    startPanel();
    start();
    ASSERT_TRUE(eventually([] { return !item().isEmpty(); }));
    ASSERT_TRUE(keepsCopying()); // by now the shortcuts are registered
    EXPECT_TRUE(eventually([this] {
        return menu().contains(
            QStringLiteral("'label': <'打开 Tessary 的全局快捷键不可用'>, 'visible': <false>"));
    })) << qPrintable(menu());
}

TEST_F(PanelIconTest, IsBackWhenThePanelIsStartedAgain)
{
    ChildProcess& first = startPanel();
    start();
    ASSERT_TRUE(isShown());
    first.kill(SIGKILL);
    ASSERT_TRUE(eventually([this] { return !isDrawn(); }));
    startPanel();
    EXPECT_TRUE(isShown());
    EXPECT_FALSE(item().isEmpty());
}

TEST_F(PanelIconTest, ComesToAPanelThatIsStartedLater)
{
    start();
    ASSERT_TRUE(tessary().printed(QStringLiteral("no panel shows icons")));
    startPanel();
    EXPECT_TRUE(isShown());
    EXPECT_FALSE(item().isEmpty());
}

TEST_F(PanelIconTest, IsNotThereWhenThePersonSwitchedItOff)
{
    writeSettings({QStringLiteral("showMenuBarIcon=false")});
    startPanel();
    start();
    ASSERT_TRUE(keepsCopying());
    EXPECT_TRUE(item().isEmpty());
    EXPECT_FALSE(isDrawn());
}

TEST_F(PanelIconTest, WithoutAnyPanelTheProgramRunsOn)
{
    start();
    ASSERT_TRUE(tessary().printed(QStringLiteral("no panel shows icons")));
    EXPECT_TRUE(keepsCopying());
    EXPECT_EQ(tessary().output().count(QLatin1String("no panel shows icons")), 1);
}

TEST_F(PanelIconTest, IsInATrayThatOnlyEmbedsWindows)
{
    startEmbeddingTray();
    start();
    ASSERT_TRUE(isShown());
    clickIcon(QStringLiteral("1"));
    EXPECT_TRUE(asksForThePanel());
}

TEST_F(PanelIconTest, TheMenuOfAnEmbeddedIconAnswersItsShortcuts)
{
    start();
    startEmbeddingTray();
    ASSERT_TRUE(isShown());
    openMenu();
    press(QStringLiteral("ctrl+q"));
    EXPECT_EQ(tessary().exitCode(), 0);
}

TEST_F(PanelIconTest, MovesFromTheEmbeddingTrayToAPanelThatOffersMore)
{
    ChildProcess& tray = startEmbeddingTray();
    start();
    ASSERT_TRUE(isShown());
    tray.kill(SIGKILL);
    startPanel();
    EXPECT_TRUE(eventually([] { return !item().isEmpty(); }));
    EXPECT_TRUE(isShown());
}

} // namespace

} // namespace tessary::testing
