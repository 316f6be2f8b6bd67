#include "app/AppSettings.h"

#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tessary {
namespace {

class AppSettingsTest : public ::testing::Test {
protected:
    std::unique_ptr<AppSettings> read() { return std::make_unique<AppSettings>(defaults, tool, folders); }
    void store(const char* key, const QVariant& value) { defaults.set(QString::fromLatin1(key), value); }
    QVariant stored(const char* key) const { return defaults.object(QString::fromLatin1(key)); }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults tool;
    testing::FakeStandardFolders folders;
};

TEST_F(AppSettingsTest, AFreshDomainGetsExactlyThreeKeys)
{
    const auto settings = read();
    EXPECT_TRUE(settings->accurateOCR());
    EXPECT_TRUE(settings->showMenuBarIcon());
    EXPECT_FALSE(settings->autoCreateReminderAfterOCR());
    EXPECT_EQ(defaults.written(),
              (QStringList{QStringLiteral("accurateOCR"), QStringLiteral("showMenuBarIcon"),
                           QStringLiteral("autoCreateReminderAfterOCR")}));
    EXPECT_EQ(stored("autoCreateReminderAfterOCR"), QVariant(false));
}

TEST_F(AppSettingsTest, AFreshDomainReadsAsTheDefaults)
{
    const auto settings = read();
    EXPECT_EQ(settings->ocrLanguages(), QStringLiteral("zh-Hans zh-Hant en-US ja-JP").split(u' '));
    EXPECT_FALSE(settings->launchAtLogin());
    EXPECT_FALSE(settings->showDockIcon());
    EXPECT_FALSE(settings->quickSearchPinned());
    EXPECT_TRUE(settings->excludedBundleIdentifiers().isEmpty());
    EXPECT_TRUE(settings->excludedDirectories().isEmpty());
    EXPECT_EQ(settings->quickSearchShortcut().rawValue(), QStringLiteral("v2|49|2048|Space"));
    EXPECT_EQ(settings->captureRegionShortcut().rawValue(), QStringLiteral("v2|15|6144|R"));
    EXPECT_EQ(settings->captureWindowShortcut().rawValue(), QStringLiteral("v2|13|6144|W"));
    EXPECT_EQ(settings->toggleMonitoringShortcut().rawValue(), QStringLiteral("v2|35|6144|P"));
    EXPECT_EQ(settings->localOCRShortcut().rawValue(), QStringLiteral("v2|31|6144|O"));
    EXPECT_EQ(settings->maxStorageGB(), 0);
    EXPECT_FALSE(settings->automaticStorageCleanup());
}

TEST_F(AppSettingsTest, AStoredWidthIsBroughtIntoRange)
{
    const std::pair<double, double> widths[] = {
        {500, 780}, {2000, 1100}, {0, 780}, {-5, 780}, {900.5, 900.5}};
    for (const auto& [width, expected] : widths) {
        store("quickSearchWidth", width);
        EXPECT_EQ(read()->quickSearchWidth(), expected);
    }
}

TEST_F(AppSettingsTest, AStoredTrashRetentionIsAtLeastADayAndAnAbsentOneThirty)
{
    EXPECT_EQ(read()->trashRetentionDays(), 30);
    for (const int days : {0, -5}) {
        store("trashRetentionDays", days);
        EXPECT_EQ(read()->trashRetentionDays(), 1);
    }
    store("trashRetentionDays", 5000);
    EXPECT_EQ(read()->trashRetentionDays(), 5000);
}

TEST_F(AppSettingsTest, ANegativeStorageLimitReadsAsNone)
{
    store("maxStorageGB", -3);
    EXPECT_EQ(read()->maxStorageGB(), 0);
}

TEST_F(AppSettingsTest, ADisabledShortcutStaysDisabledAfterARestart)
{
    read()->setQuickSearchShortcut(HotKeyShortcut{});
    EXPECT_EQ(stored("quickSearchShortcut"), QStringLiteral("disabled"));
    EXPECT_TRUE(read()->quickSearchShortcut().isDisabled());
}

TEST_F(AppSettingsTest, AGarbledShortcutFallsBackToItsDefault)
{
    store("localOCRShortcut", QStringLiteral("v2|x|y"));
    EXPECT_EQ(read()->localOCRShortcut().rawValue(), QStringLiteral("v2|31|6144|O"));
}

TEST_F(AppSettingsTest, AFreshInstallMonitorsTheScreenshotToolsFolderElseTheDesktop)
{
    EXPECT_EQ(read()->monitoredDirectory(), folders.desktop());
    tool.setLocation(QStringLiteral("/shots"));
    EXPECT_EQ(read()->monitoredDirectory(), QStringLiteral("/shots"));
    store("monitoredDirectory", QStringLiteral("/chosen"));
    EXPECT_EQ(read()->monitoredDirectory(), QStringLiteral("/chosen"));
}

TEST_F(AppSettingsTest, AnAssignmentIsStoredAsItIsAndToldOnce)
{
    const auto settings = read();
    const QSignalSpy changes(settings.get(), &AppSettings::quickSearchWidthChanged);
    settings->setQuickSearchWidth(500);
    settings->setQuickSearchWidth(500);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(settings->quickSearchWidth(), 500);
    EXPECT_EQ(stored("quickSearchWidth"), QVariant(500.0));
    settings->setTrashRetentionDays(-1);
    EXPECT_EQ(stored("trashRetentionDays"), QVariant(-1));
}

TEST_F(AppSettingsTest, AChangeIsToldBeforeItIsStored)
{
    const auto settings = read();
    QVariant storedWhenTold;
    QObject::connect(settings.get(), &AppSettings::showDockIconChanged,
                     [&] { storedWhenTold = stored("showDockIcon"); });
    settings->setShowDockIcon(true);
    EXPECT_FALSE(storedWhenTold.isValid());
    EXPECT_EQ(stored("showDockIcon"), QVariant(true));
}

TEST_F(AppSettingsTest, EveryPropertyIsStoredUnderItsNameButThreeThatNothingEdits)
{
    const auto settings = read();
    const QStringList notStored{QStringLiteral("ocrLanguages"), QStringLiteral("captureRegionShortcut"),
                                QStringLiteral("captureWindowShortcut")};
    const QMetaObject* meta = settings->metaObject();
    EXPECT_EQ(meta->propertyCount() - meta->propertyOffset(), 19);
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QString name = QString::fromLatin1(property.name());
        const qsizetype before = defaults.written().count(name);
        ASSERT_TRUE(property.write(settings.get(), property.read(settings.get()))) << property.name();
        EXPECT_EQ(defaults.written().count(name) - before, notStored.contains(name) ? 0 : 1)
            << property.name();
    }
}

TEST_F(AppSettingsTest, ListsAndTextsComeBackAfterARestart)
{
    {
        const auto settings = read();
        settings->setExcludedBundleIdentifiers({QStringLiteral("org.example.Vault")});
        settings->setExcludedDirectories({QStringLiteral("/a"), QStringLiteral("/b, c")});
        settings->setMonitoredDirectory(QStringLiteral("/截图"));
    }
    const auto settings = read();
    EXPECT_EQ(settings->excludedBundleIdentifiers(), QStringList{QStringLiteral("org.example.Vault")});
    EXPECT_EQ(settings->excludedDirectories(), (QStringList{QStringLiteral("/a"), QStringLiteral("/b, c")}));
    EXPECT_EQ(settings->monitoredDirectory(), QStringLiteral("/截图"));
}

} // namespace
} // namespace tessary
