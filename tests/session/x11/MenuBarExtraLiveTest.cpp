#include "app/AppSettings.h"
#include "app/menubar/MenuBarExtra.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/testing/FakeDesktopAppearance.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/x11/X11StatusHosts.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QImage>
#include <QProcess>

namespace tessary {
namespace {

using testing::eventually;

/// The icon in the panel of the private desktop, while the setting and the colours change under it.
class MenuBarExtraLiveTest : public ::testing::Test {
protected:
    /// How many dots of exactly that colour are in the corner where the panel shows icons.
    int dots(const QColor& colour) const
    {
        const QString path = folder.file(QStringLiteral("corner.png"));
        QProcess::execute(QStringLiteral("import"),
                          {QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("-crop"),
                           QStringLiteral("40x28+0+0"), QStringLiteral("+repage"), path});
        const QImage corner(path);
        int count = 0;
        for (int y = 0; y < corner.height(); ++y) {
            for (int x = 0; x < corner.width(); ++x)
                count += corner.pixelColor(x, y) == colour ? 1 : 0;
        }
        return count;
    }
    bool isDrawnIn(DesktopAppearance::ColourScheme scheme) const
    {
        return dots(TessaryMenuBarIcon::colour(scheme)) > 20;
    }

    testing::TemporaryFolder folder;
    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{QString(), QString()};
    testing::FakeDesktopAppearance appearance;
    AppSettings settings{defaults, screenshotTool, folders};
    X11StatusHosts hosts;
    QAction row{QStringLiteral("row")};
    MenuBarExtra extra{settings, appearance, hosts, [this](StatusHosts::Kind) {
                           return std::make_unique<StatusNotifierItem>(QStringLiteral("Tessary"),
                                                                       QList<QAction*>{&row});
                       }};
};

TEST_F(MenuBarExtraLiveTest, ComesAndGoesAndComesBackWithTheSetting)
{
    using Scheme = DesktopAppearance::ColourScheme;
    ASSERT_TRUE(eventually([&] { return isDrawnIn(Scheme::Unknown); }));
    settings.setShowMenuBarIcon(false);
    EXPECT_TRUE(eventually([&] { return dots(TessaryMenuBarIcon::colour(Scheme::Unknown)) == 0; }));
    settings.setShowMenuBarIcon(true);
    EXPECT_TRUE(eventually([&] { return isDrawnIn(Scheme::Unknown); }));
}

TEST_F(MenuBarExtraLiveTest, ChangesItsColourWithTheDesktop)
{
    using Scheme = DesktopAppearance::ColourScheme;
    ASSERT_TRUE(eventually([&] { return isDrawnIn(Scheme::Unknown); }));
    appearance.setLook({Scheme::Light, {}, false, 1});
    EXPECT_TRUE(eventually([&] { return isDrawnIn(Scheme::Light); }));
    appearance.setLook({Scheme::Dark, {}, false, 1});
    EXPECT_TRUE(eventually([&] { return isDrawnIn(Scheme::Dark); }));
}

} // namespace
} // namespace tessary
