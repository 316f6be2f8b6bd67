#include "app/AppSettings.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/x11/X11WindowEffects.h"
#include "tests/session/panel/ScreenWindows.h"
#include "tests/support/Await.h"
#include "ui/OrdinaryWindows.h"

#include <QApplication>
#include <QStandardPaths>
#include <QWidget>

namespace tessary {
namespace {

using testing::eventually;

class OrdinaryWindowsSessionTest : public ::testing::Test {
protected:
    OrdinaryWindowsSessionTest() { windows.add(window); }

    [[nodiscard]] bool shows()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
    [[nodiscard]] bool isLeftOut() const
    {
        return screen.isLeftOut(static_cast<xcb_window_t>(window.winId()));
    }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{QStringLiteral("/nowhere"), QStringLiteral("/nowhere")};
    AppSettings settings{defaults, screenshotTool, folders};
    X11WindowEffects effects;
    OrdinaryWindows windows{settings, effects};
    QWidget window;
    testing::ScreenWindows screen;
};

TEST_F(OrdinaryWindowsSessionTest, AWindowThatIsShownFollowsTheSettingAtOnce)
{
    ASSERT_TRUE(shows());
    EXPECT_TRUE(eventually([this] { return isLeftOut(); }));
    settings.setShowDockIcon(true);
    EXPECT_TRUE(eventually([this] { return !isLeftOut(); }));
    settings.setShowDockIcon(false);
    EXPECT_TRUE(eventually([this] { return isLeftOut(); }));
}

TEST_F(OrdinaryWindowsSessionTest, AWindowThatIsShownAgainIsAsTheSettingIsThen)
{
    for (const bool shows : {false, true, false, false, true, true}) {
        settings.setShowDockIcon(shows);
        ASSERT_TRUE(this->shows());
        EXPECT_TRUE(eventually([&] { return isLeftOut() == !shows; }));
        window.hide();
        ASSERT_TRUE(
            eventually([this] { return !screen.isVisible(static_cast<xcb_window_t>(window.winId())); }));
    }
}

} // namespace
} // namespace tessary

/// Of the tests' own main it differs in that Qt speaks X11.
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_QPA_PLATFORM", "xcb");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
