#include "app/AppSettings.h"

#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"

#include <QSet>

#include <gtest/gtest.h>

namespace tessary {
namespace {

class AppSettingsTest : public ::testing::Test {
protected:
    AppSettings& settings()
    {
        m_settings.reset();
        m_settings = std::make_unique<AppSettings>(defaults, screenshotTool, folders);
        return *m_settings;
    }
    AppSettings& settingsWith(const char* key, const QVariant& value)
    {
        defaults.set(QLatin1String(key), value);
        return settings();
    }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders;

private:
    std::unique_ptr<AppSettings> m_settings;
};

TEST_F(AppSettingsTest, AFreshDomainHasTheDefaultsAndGainsExactlyThreeKeys)
{
    const AppSettings& fresh = settings();
    EXPECT_TRUE(fresh.accurateOCR());
    EXPECT_TRUE(fresh.showMenuBarIcon());
    EXPECT_FALSE(fresh.autoCreateReminderAfterOCR());
    EXPECT_EQ(fresh.quickSearchWidth(), 780);
    EXPECT_EQ(fresh.trashRetentionDays(), 30);
    EXPECT_EQ(fresh.quickSearchShortcut().rawValue(), QStringLiteral("v2|49|2048|Space"));
    EXPECT_EQ(fresh.localOCRShortcut().rawValue(), QStringLiteral("v2|31|6144|O"));
    EXPECT_EQ(fresh.toggleMonitoringShortcut().rawValue(), QStringLiteral("v2|35|6144|P"));
    EXPECT_EQ(fresh.captureRegionShortcut().rawValue(), QStringLiteral("v2|15|6144|R"));
    EXPECT_EQ(fresh.captureWindowShortcut().rawValue(), QStringLiteral("v2|13|6144|W"));
    EXPECT_EQ(fresh.ocrLanguages(), (QStringList{QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"),
                                                 QStringLiteral("en-US"), QStringLiteral("ja-JP")}));
    EXPECT_EQ(QSet<QString>(defaults.written().begin(), defaults.written().end()),
              (QSet<QString>{QStringLiteral("accurateOCR"), QStringLiteral("showMenuBarIcon"),
                             QStringLiteral("autoCreateReminderAfterOCR")}));
    EXPECT_EQ(defaults.values().size(), 3);
}

TEST_F(AppSettingsTest, ClampsTheWidthOfThePanel)
{
    const std::pair<double, double> cases[] = {
        {500, 780}, {2000, 1100}, {0, 780}, {-10, 780}, {900.5, 900.5}};
    for (const auto& [stored, expected] : cases)
        EXPECT_EQ(settingsWith("quickSearchWidth", stored).quickSearchWidth(), expected) << stored;
}

TEST_F(AppSettingsTest, KeepsTheTrashAtLeastADay)
{
    EXPECT_EQ(settingsWith("trashRetentionDays", 0).trashRetentionDays(), 1);
    EXPECT_EQ(settingsWith("trashRetentionDays", -5).trashRetentionDays(), 1);
    EXPECT_EQ(settingsWith("trashRetentionDays", 400).trashRetentionDays(), 400);
}

TEST_F(AppSettingsTest, ANegativeLimitIsNoLimit)
{
    EXPECT_EQ(settingsWith("maxStorageGB", -3).maxStorageGB(), 0);
    EXPECT_EQ(settingsWith("maxStorageGB", 3).maxStorageGB(), 3);
}

TEST_F(AppSettingsTest, ADisabledShortcutStaysAndAGarbledOneFallsBack)
{
    EXPECT_TRUE(
        settingsWith("quickSearchShortcut", QStringLiteral("disabled")).quickSearchShortcut().isDisabled());
    EXPECT_EQ(settingsWith("quickSearchShortcut", QStringLiteral("v3|?")).quickSearchShortcut().rawValue(),
              QStringLiteral("v2|49|2048|Space"));
    EXPECT_EQ(settingsWith("localOCRShortcut", QStringLiteral("optionH")).localOCRShortcut().rawValue(),
              QStringLiteral("v2|4|2048|H"));
}

TEST_F(AppSettingsTest, WatchesTheScreenshotToolsFolderElseTheDesktop)
{
    EXPECT_EQ(settings().monitoredDirectory(), folders.desktop());
    screenshotTool.setLocation(QStringLiteral("/pictures/shots"));
    EXPECT_EQ(settings().monitoredDirectory(), QStringLiteral("/pictures/shots"));
    EXPECT_EQ(settingsWith("monitoredDirectory", QStringLiteral("/mine")).monitoredDirectory(),
              QStringLiteral("/mine"));
}

TEST_F(AppSettingsTest, StoredSwitchesWinOverTheirDefaults)
{
    EXPECT_FALSE(settingsWith("accurateOCR", false).accurateOCR());
    EXPECT_FALSE(settingsWith("showMenuBarIcon", QStringLiteral("false")).showMenuBarIcon());
    EXPECT_TRUE(
        settingsWith("autoCreateReminderAfterOCR", QStringLiteral("true")).autoCreateReminderAfterOCR());
}

TEST_F(AppSettingsTest, AssigningStoresAndPublishesWithoutClamping)
{
    AppSettings& assigned = settings();
    int published = 0;
    QObject::connect(&assigned, &AppSettings::quickSearchWidthChanged, &assigned, [&] { ++published; });
    assigned.setQuickSearchWidth(500);
    assigned.setQuickSearchWidth(500);
    EXPECT_EQ(published, 1);
    EXPECT_EQ(assigned.quickSearchWidth(), 500);
    EXPECT_EQ(defaults.object(QStringLiteral("quickSearchWidth")), QVariant(500.0));
    EXPECT_EQ(settings().quickSearchWidth(), 780);
}

TEST_F(AppSettingsTest, EveryAssignableSettingSurvivesARestart)
{
    AppSettings& before = settings();
    const HotKeyShortcut shortcut{4, 256, QStringLiteral("H|,\"中")};
    before.setMonitoredDirectory(QStringLiteral("/a, b"));
    before.setAccurateOCR(false);
    before.setLaunchAtLogin(true);
    before.setShowDockIcon(true);
    before.setShowMenuBarIcon(false);
    before.setQuickSearchPinned(true);
    before.setTrashRetentionDays(7);
    before.setExcludedBundleIdentifiers({QStringLiteral("one")});
    before.setExcludedDirectories({QStringLiteral("/x"), QStringLiteral("/y")});
    before.setQuickSearchShortcut(shortcut);
    before.setToggleMonitoringShortcut({});
    before.setLocalOCRShortcut(shortcut);
    before.setMaxStorageGB(5);
    before.setAutomaticStorageCleanup(true);
    before.setAutoCreateReminderAfterOCR(true);
    const AppSettings& after = settings();
    EXPECT_EQ(after.monitoredDirectory(), QStringLiteral("/a, b"));
    EXPECT_FALSE(after.accurateOCR());
    EXPECT_TRUE(after.launchAtLogin());
    EXPECT_TRUE(after.showDockIcon());
    EXPECT_FALSE(after.showMenuBarIcon());
    EXPECT_TRUE(after.quickSearchPinned());
    EXPECT_EQ(after.trashRetentionDays(), 7);
    EXPECT_EQ(after.excludedBundleIdentifiers(), QStringList{QStringLiteral("one")});
    EXPECT_EQ(after.excludedDirectories(), (QStringList{QStringLiteral("/x"), QStringLiteral("/y")}));
    EXPECT_EQ(after.quickSearchShortcut(), shortcut);
    EXPECT_TRUE(after.toggleMonitoringShortcut().isDisabled());
    EXPECT_EQ(after.localOCRShortcut(), shortcut);
    EXPECT_EQ(after.maxStorageGB(), 5);
    EXPECT_TRUE(after.automaticStorageCleanup());
    EXPECT_TRUE(after.autoCreateReminderAfterOCR());
}

TEST_F(AppSettingsTest, PublishesExactlyWhatAnotherProgramHasChanged)
{
    AppSettings& watched = settings();
    watched.setTrashRetentionDays(7);
    QStringList published;
    QObject::connect(&watched, &AppSettings::trashRetentionDaysChanged,
                     [&] { published.append(QString::number(watched.trashRetentionDays())); });
    QObject::connect(&watched, &AppSettings::maxStorageGBChanged,
                     [&] { published.append(QStringLiteral("limit")); });
    QObject::connect(&watched, &AppSettings::changedElsewhere, [&](const AppSettings::Values& before) {
        published.append(QStringLiteral("before %1").arg(before.trashRetentionDays));
    });
    defaults.changeElsewhere(QStringLiteral("trashRetentionDays"), 14);
    EXPECT_EQ(published, (QStringList{QStringLiteral("14"), QStringLiteral("before 7")}));
}

} // namespace
} // namespace tessary
