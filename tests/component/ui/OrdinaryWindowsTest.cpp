#include "ui/OrdinaryWindows.h"

#include "app/AppSettings.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWindowEffects.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace tessary {
namespace {

class OrdinaryWindowsTest : public ::testing::Test {
protected:
    QList<bool> asked(const QWidget& window) const { return effects.listed.value(window.winId()); }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{QStringLiteral("/nowhere"), QStringLiteral("/nowhere")};
    AppSettings settings{defaults, screenshotTool, folders};
    testing::FakeWindowEffects effects;
    OrdinaryWindows windows{settings, effects};
};

TEST_F(OrdinaryWindowsTest, EachTimeAWindowIsShownItIsAsTheSettingIsThen)
{
    QWidget window;
    windows.add(window);
    window.show();
    window.hide();
    settings.setShowDockIcon(true);
    window.show();
    EXPECT_EQ(asked(window), (QList{false, true}));
}

TEST_F(OrdinaryWindowsTest, AChangeReachesTheWindowsThatAreShown)
{
    QWidget shown;
    QWidget hidden;
    windows.add(shown);
    windows.add(hidden);
    {
        QWidget gone;
        windows.add(gone);
        gone.show();
    }
    shown.show();
    settings.setShowDockIcon(true);
    settings.setShowDockIcon(false);
    EXPECT_EQ(asked(shown), (QList{false, true, false}));
    EXPECT_TRUE(asked(hidden).isEmpty());
}

} // namespace
} // namespace tessary
