#include "app/AppRuntime.h"

#include "app/ApplicationIdentity.h"
#include "capture/FrontmostAppSample.h"
#include "search/ScreenshotSearchViewModel.h"
#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "tests/support/RecordSamples.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using HotKey = GlobalHotKeyService::HotKey;

class AppRuntimeTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    ~AppRuntimeTest() override
    {
        qunsetenv("TESSARY_UI_TEST_WINDOW");
        if (runtime)
            await(runtime->shutDown());
    }
    void start()
    {
        runtime = std::make_unique<AppRuntime>(platform, windows);
        await(runtime->start());
    }
    QString root() const { return folder.file(QStringLiteral("Tessary")); }
    QString projectionPath() const { return root() + QStringLiteral("/Tessary.metadata.sqlite3"); }
    QList<ScreenshotRecord> listed() const
    {
        Projection projection(projectionPath());
        return projection.records("SELECT " + columnList(kProjectionColumns) + " FROM screenshots");
    }
    bool copies(const QString& text)
    {
        const qsizetype before = listed().size();
        pasteboard.setText(text);
        clock.advance(450ms);
        return eventually([&] { return listed().size() == before + 1; });
    }
    void bringToFront(const QString& identifier, qint64 process = 1)
    {
        workspace.activate({identifier, identifier, std::nullopt, process, 7});
        ASSERT_TRUE(eventually([&] {
            return workspace.frontmostApplication() &&
                   workspace.frontmostApplication()->bundleIdentifier == identifier;
        }));
    }

    testing::FakeWindows windows;
    std::unique_ptr<AppRuntime> runtime;
};

TEST_F(AppRuntimeTest, ACopyBecomesAnItemOfTheProgramInFront)
{
    start();
    EXPECT_TRUE(runtime->isMonitoring());
    EXPECT_EQ(runtime->lastError(), std::nullopt);
    bringToFront(QStringLiteral("editor"));
    int changes = 0;
    QObject::connect(runtime.get(), &AppRuntime::libraryChanged, runtime.get(), [&] { ++changes; });
    ASSERT_TRUE(copies(QStringLiteral("copied")));
    EXPECT_EQ(listed().first().sourceBundleIdentifier, QStringLiteral("editor"));
    EXPECT_TRUE(eventually([&] { return changes == 1; }));
}

TEST_F(AppRuntimeTest, AListThatWasAskedForBeforeTheLibraryWasOpenIsReadAgain)
{
    start();
    ASSERT_TRUE(copies(QStringLiteral("kept")));
    await(runtime->shutDown());
    runtime = std::make_unique<AppRuntime>(platform, windows);
    ScreenshotSearchViewModel list(*runtime);
    list.scheduleRefresh(ScreenshotSearchViewModel::Refresh::Immediate);
    ASSERT_TRUE(eventually([&] { return !list.isSearching(); }));
    EXPECT_TRUE(list.results().isEmpty());
    await(runtime->start());
    EXPECT_TRUE(eventually([&] { return list.results().size() == 1; }));
}

TEST_F(AppRuntimeTest, AListThatWasShownBeforeTheProjectionWasMendedIsReadAgain)
{
    start();
    ASSERT_TRUE(copies(QStringLiteral("kept")));
    for (const bool isDamaged : {false, true}) {
        await(runtime->shutDown());
        runtime = std::make_unique<AppRuntime>(platform, windows);
        if (isDamaged)
            SQLiteConnection(projectionPath()).run("DELETE FROM screenshots");
        ScreenshotSearchViewModel list(*runtime);
        int opened = 0;
        QObject::connect(runtime.get(), &AppRuntime::libraryChanged, &list, [&](const LibraryChange& change) {
            opened += change.kind == LibraryChange::Kind::Opened ? 1 : 0;
        });
        await(runtime->start());
        EXPECT_EQ(opened, isDamaged ? 2 : 1);
        EXPECT_TRUE(eventually([&] { return list.results().size() == 1; }));
    }
}

TEST_F(AppRuntimeTest, ACopyWhileAnExcludedProgramIsInFrontStoresNothing)
{
    defaults.set(QStringLiteral("excludedBundleIdentifiers"), QStringList{QStringLiteral("vault")});
    start();
    bringToFront(QStringLiteral("vault"));
    pasteboard.setText(QStringLiteral("secret"));
    clock.advance(450ms);
    bringToFront(QStringLiteral("Vault"));
    ASSERT_TRUE(copies(QStringLiteral("public")));
    EXPECT_EQ(listed().first().textContent, QStringLiteral("public"));
}

TEST_F(AppRuntimeTest, ACopyWhileWeAreInFrontBelongsToTheLastOtherProgram)
{
    start();
    bringToFront(QStringLiteral("editor"));
    bringToFront(applicationIdentifier());
    ASSERT_TRUE(copies(QStringLiteral("copied")));
    EXPECT_EQ(listed().first().sourceBundleIdentifier, QStringLiteral("editor"));
}

TEST_F(AppRuntimeTest, AFailingScreenshotFolderLeavesTheClipboardWatched)
{
    directories.failWith(folder.path(), FileError::Case::ReadNoSuchFile);
    start();
    ASSERT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_TRUE(runtime->isMonitoring());
    EXPECT_TRUE(runtime->lastError()->startsWith(QStringLiteral("剪贴板记录仍在运行，但无法监听截图目录：")));
    EXPECT_TRUE(copies(QStringLiteral("still recorded")));
}

TEST_F(AppRuntimeTest, AScreenshotFolderThatHangsHoldsUpNeitherTheClipboardNorTheEnd)
{
    directories.hang(folder.path());
    start();
    ASSERT_TRUE(eventually([&] { return directories.openings() == 1; }));
    EXPECT_TRUE(copies(QStringLiteral("still recorded")));
    await(runtime->shutDown());
    runtime.reset();
}

TEST_F(AppRuntimeTest, WakingUpRecordsTheProgramInFrontAnew)
{
    start();
    bringToFront(QStringLiteral("editor"));
    const auto samples = [this] {
        QFile log(root() + QStringLiteral("/FrontmostApps.json"));
        return log.open(QIODevice::ReadOnly) ? decodeSamples(log.readAll()) : QList<FrontmostAppSample>();
    };
    ASSERT_TRUE(eventually([&] { return samples().size() == 1; }));
    workspace.wake();
    EXPECT_TRUE(eventually([&] { return samples().size() == 2; }));
    EXPECT_EQ(samples().value(1).application, samples().value(0).application);
}

TEST_F(AppRuntimeTest, TogglingTwiceWatchesAgainWithTheCurrentSettings)
{
    const QString elsewhere = folder.file(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    start();
    EXPECT_TRUE(eventually([&] { return directories.watched() == QStringList{folder.path()}; }));
    runtime->toggleMonitoring();
    EXPECT_FALSE(runtime->isMonitoring());
    EXPECT_TRUE(directories.watched().isEmpty());
    pasteboard.setText(QStringLiteral("while paused"));
    clock.advance(450ms);
    runtime->settings().setMonitoredDirectory(elsewhere);
    runtime->toggleMonitoring();
    EXPECT_TRUE(runtime->isMonitoring());
    EXPECT_TRUE(eventually([&] { return directories.watched() == QStringList{elsewhere}; }));
    ASSERT_TRUE(copies(QStringLiteral("afterwards")));
    EXPECT_EQ(listed().size(), 1);
}

TEST_F(AppRuntimeTest, OpensTheWindowThatTheEnvironmentNames)
{
    qputenv("TESSARY_UI_TEST_WINDOW", "settings");
    start();
    EXPECT_EQ(windows.settingsShown, 1);
    EXPECT_FALSE(windows.isVisible);
}

TEST_F(AppRuntimeTest, OpensThePanelThatTheEnvironmentNames)
{
    qputenv("TESSARY_UI_TEST_WINDOW", "quick");
    start();
    EXPECT_TRUE(windows.isVisible);
}

TEST_F(AppRuntimeTest, OpensNothingForAnyOtherName)
{
    for (const char* name : {"Settings", "settings ", "quick2", ""}) {
        qputenv("TESSARY_UI_TEST_WINDOW", name);
        start();
        EXPECT_EQ(windows.settingsShown, 0) << name;
        EXPECT_FALSE(windows.isVisible) << name;
        await(runtime->shutDown());
        runtime.reset();
    }
}

TEST_F(AppRuntimeTest, WithoutAHomeItRunsOnWithoutWatching)
{
    folders.failWith(FileError::Case::WriteNoPermission);
    start();
    EXPECT_FALSE(runtime->isMonitoring());
    EXPECT_EQ(runtime->store(), nullptr);
    EXPECT_TRUE(runtime->lastError());
    runtime->toggleMonitoring();
    EXPECT_FALSE(runtime->isMonitoring());
}

TEST_F(AppRuntimeTest, ASecondProgramLeavesTheLibraryAlone)
{
    start();
    ASSERT_TRUE(copies(QStringLiteral("mine")));
    testing::FakeWindows otherWindows;
    {
        AppRuntime second(platform, otherWindows);
        await(second.start());
        EXPECT_EQ(second.store(), nullptr);
        EXPECT_FALSE(second.isMonitoring());
        EXPECT_EQ(second.lastError(), QStringLiteral("另一个 Tessary 正在使用资料库，请先将其退出。"));
        await(second.shutDown());
    }
    EXPECT_TRUE(copies(QStringLiteral("still mine")));
    await(runtime->shutDown());
    runtime.reset();
    start();
    EXPECT_NE(runtime->store(), nullptr) << "the lock went with the first one";
}

TEST_F(AppRuntimeTest, WithAProjectionThatIsNoDatabaseItSaysSoAndRunsOn)
{
    ASSERT_TRUE(QDir().mkpath(root()));
    QFile file(projectionPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    start();
    EXPECT_EQ(runtime->store(), nullptr);
    ASSERT_TRUE(runtime->lastError());
    EXPECT_TRUE(runtime->lastError()->startsWith(QStringLiteral("数据库操作失败：")));
    EXPECT_TRUE(eventually([&] { return hotKeys.registrations() == 3; }));
}

TEST_F(AppRuntimeTest, ACopyThatCannotBeStoredIsToldWithItsReason)
{
    start();
    SQLiteConnection(projectionPath()).run("DROP TABLE screenshots_fts_v5");
    pasteboard.setText(QStringLiteral("unlucky"));
    clock.advance(450ms);
    ASSERT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_TRUE(runtime->lastError()->startsWith(QStringLiteral("无法记录剪贴板：数据库")));
    EXPECT_FALSE(runtime->lastError()->contains(QStringLiteral("unlucky")));
}

TEST_F(AppRuntimeTest, AnInvalidRecordIsToldAndTheRestGoesOn)
{
    start();
    ASSERT_TRUE(copies(QStringLiteral("x")));
    await(runtime->shutDown());
    runtime.reset();
    SQLiteConnection(root() + QStringLiteral("/Tessary.sqlite3"))
        .run("UPDATE ScreenshotEntity SET ocrStatus = 77");
    start();
    ASSERT_TRUE(runtime->lastError());
    EXPECT_TRUE(runtime->lastError()->startsWith(QStringLiteral("无法同步搜索索引：")));
    EXPECT_TRUE(runtime->isMonitoring());
}

TEST_F(AppRuntimeTest, OnlyTheQuickSearchShortcutDecidesWhetherShortcutsAreAvailable)
{
    hotKeys.take({31, 6144});
    start();
    EXPECT_TRUE(eventually([&] { return runtime->hotKeyConflicts() == QSet{HotKey::LocalOCR}; }));
    EXPECT_TRUE(runtime->hotKeyAvailable());
    hotKeys.take({49, 2048});
    hotKeys.free({31, 6144});
    runtime->registerHotKeys();
    EXPECT_TRUE(eventually([&] { return runtime->hotKeyConflicts() == QSet{HotKey::QuickSearch}; }));
    EXPECT_FALSE(runtime->hotKeyAvailable());
}

TEST_F(AppRuntimeTest, TheShortcutsDoWhatTheyAreFor)
{
    permissions.setState({true, true, true});
    start();
    ASSERT_TRUE(eventually([&] { return hotKeys.registrations() == 3; }));
    hotKeys.press({49, 2048});
    EXPECT_TRUE(eventually([&] { return windows.isVisible; }));
    hotKeys.press({49, 2048});
    EXPECT_TRUE(eventually([&] { return !windows.isVisible; }));
    hotKeys.press({35, 6144});
    EXPECT_TRUE(eventually([&] { return !runtime->isMonitoring(); }));
    hotKeys.press({31, 6144});
    EXPECT_TRUE(eventually([&] { return windows.selector.begun == 1; }));
}

TEST_F(AppRuntimeTest, PermissionsAreReadAgainWhenWeComeToTheFrontOnly)
{
    start();
    ASSERT_TRUE(eventually([&] { return permissions.probes() == 1; }));
    permissions.setState({true, true, false});
    bringToFront(QStringLiteral("other"));
    EXPECT_EQ(permissions.probes(), 1);
    bringToFront(applicationIdentifier(), QCoreApplication::applicationPid());
    EXPECT_TRUE(eventually([&] { return runtime->accessibilityPermissionGranted(); }));
    EXPECT_TRUE(runtime->screenRecordingPermissionGranted());
    EXPECT_FALSE(runtime->reminderPermissionGranted());
}

TEST_F(AppRuntimeTest, PermissionsAreReadAgainWhenOneOfOurWindowsBecomesActive)
{
    start();
    ASSERT_TRUE(eventually([&] { return permissions.probes() == 1; }));
    permissions.setState({false, false, true});
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_EQ(permissions.probes(), 1);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(eventually([&] { return runtime->reminderPermissionGranted(); }));
}

TEST_F(AppRuntimeTest, AFailedRequestForRemindersIsToldWithItsReason)
{
    start();
    permissions.failRequestsWith(ReminderStoreError::Case::TimedOut);
    runtime->requestReminderPermission();
    EXPECT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_EQ(runtime->lastError(), QStringLiteral("无法申请提醒事项权限：提醒事项服务没有及时响应。"));
}

TEST_F(AppRuntimeTest, TheLoginItemFollowsTheSetting)
{
    start();
    runtime->settings().setLaunchAtLogin(true);
    runtime->updateLaunchAtLogin();
    EXPECT_TRUE(eventually([&] { return loginItem.wasEnabled(); }));
    loginItem.failWith(FileError::Case::WriteVolumeReadOnly);
    runtime->settings().setLaunchAtLogin(false);
    runtime->updateLaunchAtLogin();
    EXPECT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_TRUE(runtime->lastError()->startsWith(QStringLiteral("无法更新开机启动设置：磁盘为只读")));
    EXPECT_FALSE(runtime->settings().launchAtLogin()) << "stays as it was set";
}

TEST_F(AppRuntimeTest, TheUsageOfTheLibraryIsKnownAfterTheStartAndAfterACopy)
{
    start();
    ASSERT_TRUE(eventually([&] { return runtime->storageBytes() > 0; }));
    const qint64 before = runtime->storageBytes();
    ASSERT_TRUE(copies(QString(200'000, u'x')));
    EXPECT_TRUE(eventually([&] {
        clock.advance(1s);
        return runtime->storageBytes() > before;
    }));
}

TEST_F(AppRuntimeTest, WhatHasBeenInTheTrashTooLongIsGoneAfterTheStart)
{
    defaults.set(QStringLiteral("trashRetentionDays"), 1);
    start();
    ASSERT_TRUE(copies(QStringLiteral("old")));
    ASSERT_TRUE(copies(QStringLiteral("kept")));
    const QList<ScreenshotRecord> both = listed();
    const auto old = std::find_if(both.begin(), both.end(),
                                  [](const auto& item) { return item.textContent == QStringLiteral("old"); });
    await(runtime->moveToTrash(*old));
    await(runtime->shutDown());
    runtime.reset();
    clock.advance(std::chrono::hours(50));
    start();
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().textContent, QStringLiteral("kept"));
}

TEST_F(AppRuntimeTest, WhatAPersonDoesToAnItemReachesTheLibrary)
{
    start();
    ASSERT_TRUE(copies(QStringLiteral("item")));
    await(runtime->toggleFavorite(listed().first()));
    await(runtime->togglePinned(listed().first()));
    await(runtime->saveMetadata(listed().first(), {QStringLiteral("tag")}, QStringLiteral("note")));
    EXPECT_TRUE(listed().first().isFavorite);
    EXPECT_TRUE(listed().first().isPinned);
    EXPECT_EQ(listed().first().tags, QStringList{QStringLiteral("tag")});
    await(runtime->toggleFavorite(listed().first()));
    EXPECT_FALSE(listed().first().isFavorite);
}

TEST_F(AppRuntimeTest, RevealsTheOriginalOrElseTheCopyInTheLibrary)
{
    start();
    ScreenshotRecord record = testing::fullRecord();
    record.contentType = ClipboardContentType::Image;
    record.originalPath = folder.file(QStringLiteral("original.png"));
    record.libraryPath = folder.file(QStringLiteral("copy.png"));
    for (const QString& path : {record.originalPath, record.libraryPath})
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    runtime->revealInFinder(record);
    ASSERT_TRUE(eventually([&] { return fileManager.revealed().size() == 1; }));
    ASSERT_TRUE(QFile::remove(record.originalPath));
    runtime->revealInFinder(record);
    ASSERT_TRUE(eventually([&] { return fileManager.revealed().size() == 2; }));
    ASSERT_TRUE(QFile::remove(record.libraryPath));
    fileManager.failWith(FileManagerError::Case::NoSuchFile);
    runtime->revealInFinder(record);
    EXPECT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_EQ(fileManager.revealed(),
              (QStringList{record.originalPath, record.libraryPath, record.originalPath}));
    EXPECT_EQ(runtime->lastError(), QStringLiteral("找不到文件“original.png”，它可能已被移动或删除。"));
}

TEST_F(AppRuntimeTest, ATextHasNothingToReveal)
{
    start();
    runtime->revealInFinder(testing::textRecord(QStringLiteral("text")));
    EXPECT_TRUE(eventually([&] { return runtime->lastError().has_value(); }));
    EXPECT_TRUE(fileManager.revealed().isEmpty());
}

TEST_F(AppRuntimeTest, ListsAndFacetsAreThoseOfTheLibrary)
{
    start();
    bringToFront(QStringLiteral("editor"));
    ASSERT_TRUE(copies(QStringLiteral("会议纪要")));
    ListRequest request;
    request.rawQuery = QStringLiteral("huiyi app:edit");
    request.calendar = Calendar::current();
    const QList<ScreenshotRecord> found = await(runtime->search(request, {}));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.first().textContent, QStringLiteral("会议纪要"));
    EXPECT_EQ(await(runtime->facets()).sourceApps, QStringList{QStringLiteral("editor")});
    request.rawQuery = QStringLiteral("absent");
    EXPECT_TRUE(await(runtime->search(request, {})).isEmpty());
}

TEST_F(AppRuntimeTest, WithoutALibraryListsAreEmpty)
{
    folders.failWith(FileError::Case::WriteNoPermission);
    start();
    EXPECT_TRUE(await(runtime->search({}, {})).isEmpty());
    EXPECT_EQ(await(runtime->facets()), LibraryFacets());
}

TEST_F(AppRuntimeTest, AScreenshotThatAppearsIsImportedUnlessItsFolderIsExcluded)
{
    defaults.set(QStringLiteral("excludedDirectories"),
                 QStringList{folder.file(QStringLiteral("shots/private"))});
    const QString shots = folder.file(QStringLiteral("shots"));
    ASSERT_TRUE(QDir().mkpath(shots));
    defaults.set(QStringLiteral("monitoredDirectory"), shots);
    start();
    ASSERT_TRUE(eventually([&] { return directories.watched() == QStringList{shots}; }));
    for (const char* name : {"Screenshot 1.png", "private screenshot.png"}) {
        QFile file(shots + u'/' + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(name);
    }
    directories.announceChange(shots);
    EXPECT_TRUE(eventually([&] {
        if (clock.sleeping() > 0)
            clock.advance(250ms);
        return listed().size() == 1;
    }));
    EXPECT_EQ(listed().first().filename, QStringLiteral("Screenshot 1.png"));
}

} // namespace
} // namespace tessary
