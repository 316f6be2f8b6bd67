#include "app/RewrittenSettings.h"

#include "app/AppRuntime.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

class RewrittenSettingsTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    RewrittenSettingsTest() { await(runtime.start()); }
    ~RewrittenSettingsTest() override { await(runtime.shutDown()); }

    testing::FakeWindows windows;
    AppRuntime runtime{platform, windows};
    RewrittenSettings rewritten{runtime};
};

TEST_F(RewrittenSettingsTest, AnotherShortcutIsRegisteredInPlaceOfTheOld)
{
    defaults.changeElsewhere(QStringLiteral("quickSearchShortcut"), QStringLiteral("v2|7|2304|X"));
    EXPECT_TRUE(eventually([&] { return hotKeys.isRegistered({7, 2304}); }));
    EXPECT_FALSE(hotKeys.isRegistered({49, 2048}));
}

TEST_F(RewrittenSettingsTest, AnotherFolderIsWatched)
{
    const int openings = directories.openings();
    defaults.changeElsewhere(QStringLiteral("monitoredDirectory"), folder.file(QStringLiteral("pictures")));
    EXPECT_TRUE(eventually([&] { return directories.openings() == openings + 1; }));
    EXPECT_TRUE(runtime.isMonitoring());
}

TEST_F(RewrittenSettingsTest, AnotherFolderDoesNotEndAPause)
{
    runtime.toggleMonitoring();
    defaults.changeElsewhere(QStringLiteral("monitoredDirectory"), folder.file(QStringLiteral("pictures")));
    EXPECT_FALSE(runtime.isMonitoring());
}

TEST_F(RewrittenSettingsTest, LaunchAtLoginIsCarriedOut)
{
    defaults.changeElsewhere(QStringLiteral("launchAtLogin"), true);
    EXPECT_TRUE(eventually([&] { return await(loginItem.isEnabled()); }));
}

} // namespace
} // namespace tessary
