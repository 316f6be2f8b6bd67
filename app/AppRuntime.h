#pragma once

#include "app/AppSettings.h"
#include "app/ClipboardIntake.h"
#include "app/FileIntake.h"
#include "app/GlobalHotKeyService.h"
#include "app/ItemExporter.h"
#include "app/LibraryFiles.h"
#include "app/LocalOCRFlow.h"
#include "app/PasteBack.h"
#include "app/PermissionRequests.h"
#include "app/StorageMaintenance.h"
#include "app/SystemIntegrationService.h"
#include "app/archive/LibraryArchive.h"
#include "base/FlowSet.h"
#include "base/KeyedGate.h"
#include "base/Milestone.h"
#include "capture/ClipboardMonitor.h"
#include "capture/ScreenshotDirectoryMonitor.h"
#include "platform/Platform.h"
#include "search/LibraryActions.h"
#include "store/AppPaths.h"
#include "store/SQLiteStore.h"

namespace tessary {

class FrontmostAppTracker;
class ScreenshotImporter;
class WindowPresenter;

/// The one coordinator: owns every service, publishes what all windows observe, and delegates. Main thread
/// only; lives as long as the program.
class AppRuntime : public LibraryActions {
    Q_OBJECT
public:
    using HotKeys = QSet<GlobalHotKeyService::HotKey>;

    /// Builds what needs no library. `start()` does the rest.
    AppRuntime(Platform platform, WindowPresenter& windows);
    ~AppRuntime() override;

    /// Opens the library, brings its index in line, and begins to watch. A step that fails is told in
    /// `lastError` and passed over.
    [[nodiscard]] QCoro::Task<> start();
    /// Stops watching, lets running imports end, and sees to it that what was copied can still be pasted.
    /// Nothing else may be called afterwards.
    [[nodiscard]] QCoro::Task<> shutDown();

    /// Ends when the library may be asked and recording has begun, or the library could not be opened.
    [[nodiscard]] QCoro::Task<> opened();

    [[nodiscard]] AppSettings& settings() { return m_settings; }
    [[nodiscard]] SQLiteStore* store() const { return m_store.get(); }        ///< Null when it did not open.
    [[nodiscard]] LibraryArchive* archive() const { return m_archive.get(); } ///< Null without a library.
    [[nodiscard]] FileIntake* fileIntake() const { return m_fileIntake.get(); } ///< Null without a library.
    [[nodiscard]] const std::optional<AppPaths>& paths() const { return m_paths; }
    /// Where the runtime's flows are kept until it ends.
    [[nodiscard]] FlowSet& flows() { return m_flows; }
    [[nodiscard]] bool isMonitoring() const { return m_isMonitoring; }
    /// Whether the quick-search shortcut could be registered; the others do not count.
    [[nodiscard]] bool hotKeyAvailable() const { return m_hotKeyAvailable; }
    [[nodiscard]] const HotKeys& hotKeyConflicts() const { return m_hotKeyConflicts; }
    [[nodiscard]] bool screenRecordingPermissionGranted() const
    {
        return m_permissions.state().screenRecording;
    }
    [[nodiscard]] bool accessibilityPermissionGranted() const { return m_permissions.state().accessibility; }
    [[nodiscard]] bool reminderPermissionGranted() const { return m_permissions.state().reminders; }
    /// Bytes allocated by the library when it was last measured.
    [[nodiscard]] qint64 storageBytes() const { return m_storage.storageBytes(); }
    /// What to tell the person about the most recent failure.
    [[nodiscard]] const std::optional<QString>& lastError() const { return m_lastError; }
    void clearLastError();

    /// Registers the three global shortcuts anew, as the settings have them.
    void registerHotKeys();
    /// Stops and restarts the watching of clipboard and folder; without a library it only stops.
    void restartMonitoring();
    void toggleMonitoring();
    void toggleQuickSearch();
    /// Shows the panel, in front of everything.
    void showQuickSearch();
    void openSettings();
    /// The panel is about to have the keyboard: what was typed since its shortcut is for its window.
    void panelBecameKey(quintptr window) { m_hotKeyService.releaseKeyboardTo(window); }
    /// The panel is gone: what was typed since its shortcut is for whoever has the keyboard.
    void panelGaveUpKeyboard() { m_hotKeyService.releaseKeyboard(); }
    /// Recognises the text in a region of the screen that the person drags.
    void performLocalOCR() { m_flows.add(m_localOCR.perform()); }
    /// To be called when the settings of recognition have changed: the recogniser keeps what it began with,
    /// so they count from the next start.
    void updateOCRConfiguration();
    /// The ways to recognise text.
    [[nodiscard]] LocalOCRFlow& localOCR() { return m_localOCR; }
    void refreshPermissions() { m_permissions.refresh(); }
    void requestReminderPermission() { m_permissions.requestReminderPermission(); }
    /// What to do for a permission that is missing.
    [[nodiscard]] PermissionRequests& permissionRequests() { return m_permissions; }
    /// Brings the system in line with the setting; where that fails the setting stays, and the person is
    /// told.
    void updateLaunchAtLogin() { m_flows.add(applyLaunchAtLogin(m_settings.launchAtLogin())); }

    // As in StorageMaintenance.
    void refreshStorageUsage() { m_storage.refreshStorageUsage(); }
    [[nodiscard]] QCoro::Task<> enforceStorageLimit() { return m_storage.enforceStorageLimit(); }
    [[nodiscard]] QCoro::Task<> clearAllData() { return m_storage.clearAllData(); }
    [[nodiscard]] QCoro::Task<qint64> purgeTrash(StorageMaintenance::Trash which)
    {
        return m_storage.purgeTrash(which);
    }
    [[nodiscard]] QCoro::Task<StorageUsage> measureUsage() { return m_storage.measureUsage(); }

    [[nodiscard]] Clock& clock() override { return m_platform.clock; }
    [[nodiscard]] QCoro::Task<QList<ScreenshotRecord>> search(ListRequest request,
                                                              std::stop_token stop) override;
    [[nodiscard]] QCoro::Task<LibraryFacets> facets() override;
    [[nodiscard]] QCoro::Task<> copy(ScreenshotRecord record, bool pasteIntoPreviousApplication) override;
    /// The same. @returns what the person has to know, if anything, without telling it in `lastError`.
    [[nodiscard]] QCoro::Task<std::optional<QString>> copyOrExplain(ScreenshotRecord record,
                                                                    bool pasteIntoPreviousApplication);
    /// The program in front now is where pasting goes.
    void rememberPreviousApplication() { m_pasteBack.rememberPreviousApplication(); }
    [[nodiscard]] QCoro::Task<> toggleFavorite(ScreenshotRecord record) override;
    [[nodiscard]] QCoro::Task<> togglePinned(ScreenshotRecord record) override;
    [[nodiscard]] QCoro::Task<> moveToTrash(ScreenshotRecord record) override;
    /// Lets a task run to its end; its failure is told in `lastError`.
    void perform(QCoro::Task<> task) { m_flows.add(std::move(task)); }
    void reportFailure(const QString& message) override { setLastError(message); }
    /// Opens the item in a window of its own.
    void preview(const ScreenshotRecord& record);
    /// Shows the item's original file in the file manager, or the library's copy when the original is gone.
    /// A text has no file: that is told in `lastError`, as is any failure.
    void revealInFinder(const ScreenshotRecord& record);
    /// Shows the library's folder in the file manager; a failure is told in `lastError`.
    void revealLibrary();
    [[nodiscard]] QCoro::Task<> saveMetadata(ScreenshotRecord record, QStringList tags, QString note);
    /// The item as the library has it now, its text whole; nothing when it is gone. @throws StoreError.
    [[nodiscard]] QCoro::Task<std::optional<ScreenshotRecord>> item(QUuid id);
    /// As in ImageCodec.
    [[nodiscard]] QCoro::Task<QImage> picturePart(QString path, QRect part, QSize size);
    /// As in ItemExporter; of a text the whole, even where the record's was cut.
    /// @returns false when there is something that is to be left.
    [[nodiscard]] QCoro::Task<bool> exportItem(ScreenshotRecord record, QString path,
                                               ItemExporter::IfTaken ifTaken);

Q_SIGNALS:
    void isMonitoringChanged();
    void hotKeysChanged();
    void permissionsChanged();
    void storageBytesChanged();
    void lastErrorChanged();

private:
    QCoro::Task<> openLibrary();
    void installIntakes();
    QCoro::Task<> reconcile();
    QCoro::Task<> watchFolder();
    QCoro::Task<> recoverImports();
    QCoro::Task<> updateHotKeys();
    QCoro::Task<> applyLaunchAtLogin(bool launches);
    QCoro::Task<> reveal(ScreenshotRecord record);
    void stopMonitoring();
    void openRequestedWindow();
    void observeActivation();
    void observeStorage();
    void observePermissions();
    void observeRecognition();
    void setMonitoring(bool isMonitoring);
    void setLastError(const QString& message);

    Platform m_platform;
    WindowPresenter& m_windows;
    FlowSet m_flows;
    AppSettings m_settings;
    bool m_isMonitoring = false;
    bool m_hotKeyAvailable = true;
    HotKeys m_hotKeyConflicts;
    KeyedGate m_hotKeyGate;
    SystemIntegrationService m_integration;
    PermissionRequests m_permissions;
    std::optional<QString> m_lastError;
    LocalOCRFlow m_localOCR;
    LibraryFiles m_libraryFiles;
    StorageMaintenance m_storage;
    std::optional<AppPaths> m_paths;
    std::unique_ptr<SQLiteStore> m_store;
    std::unique_ptr<FrontmostAppTracker> m_frontmostAppTracker;
    std::unique_ptr<ScreenshotImporter> m_importer;
    std::unique_ptr<LibraryArchive> m_archive;
    Milestone m_opened;
    ScreenshotDirectoryMonitor m_directoryMonitor;
    ClipboardMonitor m_clipboardMonitor;
    GlobalHotKeyService m_hotKeyService;
    std::unique_ptr<ClipboardIntake> m_clipboardIntake;
    std::unique_ptr<FileIntake> m_fileIntake;
    PasteBack m_pasteBack;
    ItemExporter m_exporter;
};

} // namespace tessary
