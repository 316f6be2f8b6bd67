#include "app/menubar/MenuBarExtra.h"

#include "app/AppSettings.h"
#include "platform/testing/FakeDesktopAppearance.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeStatusHosts.h"
#include "platform/testing/FakeUserDefaults.h"
#include "tests/support/Await.h"

#include <QMenu>

namespace tessary {
namespace {

using testing::eventually;
using Kind = StatusHosts::Kind;
using ColourScheme = DesktopAppearance::ColourScheme;

class MenuBarExtraTest : public ::testing::Test {
protected:
    void start()
    {
        settings = std::make_unique<AppSettings>(defaults, screenshotTool, folders);
        extra = std::make_unique<MenuBarExtra>(*settings, appearance, hosts, menu);
    }
    void setHost(Kind kind)
    {
        hosts.setKind(kind);
        ASSERT_TRUE(eventually([&] { return hosts.kind() == kind; }));
    }
    bool isShown() const { return extra->icon() != nullptr && extra->icon()->isVisible(); }
    QColor markColour() const
    {
        // The upright of the mark goes through the middle of the lower half.
        return extra->icon()->icon().pixmap(QSize(48, 48)).toImage().pixelColor(24, 32);
    }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{QString(), QString()};
    testing::FakeDesktopAppearance appearance;
    testing::FakeStatusHosts hosts;
    QMenu menu;
    std::unique_ptr<AppSettings> settings;
    std::unique_ptr<MenuBarExtra> extra;
};

TEST_F(MenuBarExtraTest, IsThereExactlyWhileTheSettingSaysSo)
{
    start();
    setHost(Kind::StatusNotifier);
    ASSERT_TRUE(isShown());
    EXPECT_EQ(extra->icon()->contextMenu(), &menu);
    EXPECT_EQ(extra->icon()->toolTip(), QStringLiteral("Tessary"));
    settings->setShowMenuBarIcon(false);
    EXPECT_EQ(extra->icon(), nullptr);
    settings->setShowMenuBarIcon(true);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarExtraTest, IsNotThereWhenTheSettingIsOffFromTheStart)
{
    defaults.set(QStringLiteral("showMenuBarIcon"), false);
    start();
    setHost(Kind::StatusNotifier);
    EXPECT_EQ(extra->icon(), nullptr);
    settings->setShowMenuBarIcon(true);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarExtraTest, WaitsForAPanel)
{
    start();
    EXPECT_EQ(extra->icon(), nullptr);
    setHost(Kind::None);
    EXPECT_EQ(extra->icon(), nullptr);
    setHost(Kind::StatusNotifier);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarExtraTest, StaysWhileThePanelIsStartedAgain)
{
    start();
    setHost(Kind::StatusNotifier);
    const QSystemTrayIcon* icon = extra->icon();
    setHost(Kind::None);
    setHost(Kind::StatusNotifier);
    EXPECT_EQ(extra->icon(), icon);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarExtraTest, TakesATrayThatOnlyEmbedsWhenNothingBetterComesSoon)
{
    start();
    setHost(Kind::Embedding);
    EXPECT_EQ(extra->icon(), nullptr);
    EXPECT_TRUE(eventually([&] { return isShown(); }));
}

TEST_F(MenuBarExtraTest, TheSettingSwitchedOffWhileItWaitsKeepsItAway)
{
    start();
    setHost(Kind::Embedding);
    settings->setShowMenuBarIcon(false);
    QTimer later;
    later.setSingleShot(true);
    later.start(std::chrono::milliseconds(1500)); // longer than it waits
    ASSERT_TRUE(eventually([&] { return !later.isActive(); }));
    EXPECT_EQ(extra->icon(), nullptr);
}

TEST_F(MenuBarExtraTest, AClickActivatesIt)
{
    start();
    setHost(Kind::StatusNotifier);
    int activations = 0;
    QObject::connect(extra.get(), &MenuBarExtra::activated, [&] { ++activations; });
    Q_EMIT extra->icon()->activated(QSystemTrayIcon::Context);
    EXPECT_EQ(activations, 0);
    Q_EMIT extra->icon()->activated(QSystemTrayIcon::Trigger);
    EXPECT_EQ(activations, 1);
}

TEST_F(MenuBarExtraTest, FollowsTheColoursOfTheDesktop)
{
    start();
    setHost(Kind::StatusNotifier);
    EXPECT_EQ(markColour(), TessaryMenuBarIcon::colour(ColourScheme::Unknown));
    appearance.setLook({ColourScheme::Dark, {}, false, 1});
    EXPECT_TRUE(eventually([&] { return markColour() == TessaryMenuBarIcon::colour(ColourScheme::Dark); }));
    appearance.setLook({ColourScheme::Light, {}, false, 1});
    EXPECT_TRUE(eventually([&] { return markColour() == TessaryMenuBarIcon::colour(ColourScheme::Light); }));
}

} // namespace
} // namespace tessary
