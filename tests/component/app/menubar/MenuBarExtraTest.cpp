#include "app/menubar/MenuBarExtra.h"

#include "app/AppSettings.h"
#include "platform/testing/FakeDesktopAppearance.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeStatusHosts.h"
#include "platform/testing/FakeUserDefaults.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::eventually;
using Kind = StatusHosts::Kind;
using ColourScheme = DesktopAppearance::ColourScheme;

class MenuBarExtraTest : public ::testing::Test {
protected:
    /// An item that only remembers what is shown.
    class Item : public StatusItem {
    public:
        Item(Kind itemKind, Item** place) : kind(itemKind), m_place(place) { *m_place = this; }
        ~Item() override
        {
            if (*m_place == this)
                *m_place = nullptr;
        }
        void setIcon(const QIcon& newIcon) override { icon = newIcon; }

        Kind kind;
        QIcon icon;

    private:
        Item** m_place;
    };

    void start()
    {
        settings = std::make_unique<AppSettings>(defaults, screenshotTool, folders);
        extra = std::make_unique<MenuBarExtra>(
            *settings, appearance, hosts, [this](Kind kind) { return std::make_unique<Item>(kind, &item); });
    }
    void setHost(Kind kind)
    {
        hosts.setKind(kind);
        ASSERT_TRUE(eventually([&] { return hosts.kind() == kind; }));
    }
    bool isShown(Kind kind) const { return item != nullptr && item->kind == kind && !item->icon.isNull(); }
    QColor markColour() const
    {
        // The upright of the mark goes through the middle of the lower half.
        return item->icon.pixmap(QSize(48, 48)).toImage().pixelColor(24, 32);
    }
    void waitLongerThanItsPatience()
    {
        QTimer later;
        later.setSingleShot(true);
        later.start(std::chrono::milliseconds(1500));
        ASSERT_TRUE(eventually([&] { return !later.isActive(); }));
    }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{QString(), QString()};
    testing::FakeDesktopAppearance appearance;
    testing::FakeStatusHosts hosts;
    std::unique_ptr<AppSettings> settings;
    Item* item = nullptr;
    std::unique_ptr<MenuBarExtra> extra;
};

TEST_F(MenuBarExtraTest, IsThereExactlyWhileTheSettingSaysSo)
{
    start();
    setHost(Kind::StatusNotifier);
    ASSERT_TRUE(isShown(Kind::StatusNotifier));
    settings->setShowMenuBarIcon(false);
    EXPECT_EQ(item, nullptr);
    settings->setShowMenuBarIcon(true);
    EXPECT_TRUE(isShown(Kind::StatusNotifier));
}

TEST_F(MenuBarExtraTest, IsNotThereWhenTheSettingIsOffFromTheStart)
{
    defaults.set(QStringLiteral("showMenuBarIcon"), false);
    start();
    setHost(Kind::StatusNotifier);
    EXPECT_EQ(item, nullptr);
    settings->setShowMenuBarIcon(true);
    EXPECT_TRUE(isShown(Kind::StatusNotifier));
}

TEST_F(MenuBarExtraTest, WaitsForAPanel)
{
    start();
    EXPECT_EQ(item, nullptr);
    setHost(Kind::None);
    EXPECT_EQ(item, nullptr);
    setHost(Kind::StatusNotifier);
    EXPECT_TRUE(isShown(Kind::StatusNotifier));
}

TEST_F(MenuBarExtraTest, StaysWhileThePanelIsStartedAgain)
{
    start();
    setHost(Kind::StatusNotifier);
    const Item* before = item;
    setHost(Kind::None);
    setHost(Kind::Embedding); // a panel's tray comes before its host on the bus
    setHost(Kind::StatusNotifier);
    waitLongerThanItsPatience();
    EXPECT_EQ(item, before);
}

TEST_F(MenuBarExtraTest, TakesATrayThatOnlyEmbedsWhenNothingBetterComesSoon)
{
    start();
    setHost(Kind::Embedding);
    EXPECT_EQ(item, nullptr);
    EXPECT_TRUE(eventually([&] { return isShown(Kind::Embedding); }));
}

TEST_F(MenuBarExtraTest, MovesFromATrayThatOnlyEmbedsToABetterHost)
{
    start();
    setHost(Kind::Embedding);
    ASSERT_TRUE(eventually([&] { return isShown(Kind::Embedding); }));
    setHost(Kind::StatusNotifier);
    EXPECT_TRUE(isShown(Kind::StatusNotifier));
}

TEST_F(MenuBarExtraTest, TheSettingSwitchedOffWhileItWaitsKeepsItAway)
{
    start();
    setHost(Kind::Embedding);
    settings->setShowMenuBarIcon(false);
    waitLongerThanItsPatience();
    EXPECT_EQ(item, nullptr);
}

TEST_F(MenuBarExtraTest, TellsOfClicks)
{
    start();
    setHost(Kind::StatusNotifier);
    int activations = 0;
    QPoint menuAt;
    QObject::connect(extra.get(), &MenuBarExtra::activated, [&] { ++activations; });
    QObject::connect(extra.get(), &MenuBarExtra::menuRequested, [&](const QPoint& at) { menuAt = at; });
    Q_EMIT item->activated();
    Q_EMIT item->menuRequested(QPoint(3, 4));
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(menuAt, QPoint(3, 4));
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
