#include "app/AppRuntime.h"

#include "app/ApplicationIdentity.h"
#include "app/WindowPresenter.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"
#include "store/FileImageCache.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(lcRuntime, "tessary.runtime")

namespace tessary {
namespace {

constexpr std::chrono::seconds kPatience{1}; // at the end, with files that do not come
constexpr double kRecoveredDistance = 600;   // seconds; the heartbeat of the history comes every 300

} // namespace

AppRuntime::AppRuntime(Platform platform, WindowPresenter& windows)
    : m_platform(platform),
      m_windows(windows),
      m_flows([this](const std::exception& error) { setLastError(localizedDescription(error)); }),
      m_settings(platform.userDefaults, platform.screenshotTool, platform.folders),
      m_integration(platform.loginItem, platform.privacySettings),
      m_permissions(platform.permissions, m_integration, m_flows),
      m_localOCR(platform, windows, m_settings, m_flows),
      m_storage(m_settings, platform.clock, m_libraryFiles, m_flows),
      m_directoryMonitor(platform.directories, platform.clock),
      m_clipboardMonitor(platform.pasteboard, platform.clock, platform.imageCodec, m_flows),
      m_hotKeyService(platform.hotKeys),
      m_pasteBack(platform, windows)
{
    refreshPermissions();
    observeActivation();
    observePermissions();
    observeStorage();
    observeRecognition();
}

AppRuntime::~AppRuntime()
{
    FileImageCache::shared().setSources(nullptr, {});
}

void AppRuntime::observeActivation()
{
    connect(&m_platform.workspace, &Workspace::applicationActivated, this,
            [this](const RunningApplication& app) {
                if (app.processIdentifier == QCoreApplication::applicationPid())
                    refreshPermissions();
            });
    if (auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        connect(application, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state == Qt::ApplicationActive)
                        refreshPermissions();
                });
}

void AppRuntime::observePermissions()
{
    connect(&m_permissions, &PermissionRequests::changed, this, &AppRuntime::permissionsChanged);
    connect(&m_permissions, &PermissionRequests::failed, this, &AppRuntime::setLastError);
}

void AppRuntime::observeStorage()
{
    connect(&m_storage, &StorageMaintenance::storageBytesChanged, this, &AppRuntime::storageBytesChanged);
    connect(&m_storage, &StorageMaintenance::libraryChanged, this, &AppRuntime::libraryChanged);
    connect(&m_storage, &StorageMaintenance::failed, this, &AppRuntime::setLastError);
}

void AppRuntime::observeRecognition()
{
    connect(&m_localOCR, &LocalOCRFlow::failed, this, &AppRuntime::setLastError);
    connect(&m_localOCR, &LocalOCRFlow::remindersUsed, this, &AppRuntime::refreshPermissions);
}

// --- starting and ending ----------------------------------------------------

QCoro::Task<> AppRuntime::start()
{
    const FlowSet::Stay stay(m_flows);
    co_await openLibrary();
    registerHotKeys();
    Q_EMIT libraryChanged(
        {LibraryChange::Kind::Opened, {}}); // lists were asked for before there was a library
    co_await reconcile();
    co_await m_storage.finishRemovals();
    co_await recoverImports();
    if (m_flows.stopToken().stop_requested())
        co_return; // asked to end before it was up
    restartMonitoring();
    m_opened.reach();
    co_await m_storage.purgeExpiredTrash();
    co_await m_storage.enforceStorageLimit();
    refreshStorageUsage();
    openRequestedWindow();
}

QCoro::Task<> AppRuntime::opened()
{
    const FlowSet::Stay stay(m_flows);
    auto reached = m_opened.reached();
    co_await reached;
}

QCoro::Task<> AppRuntime::openLibrary()
{
    try {
        const AppPaths paths = co_await m_libraryFiles.prepare(m_platform.folders);
        m_paths = paths;
        m_storage.setPaths(paths);
        FileImageCache::shared().setSources(&m_platform.imageCodec, {paths.thumbnails, paths.appIcons});
        m_store = co_await SQLiteStore::open(paths.database);
        m_frontmostAppTracker = co_await FrontmostAppTracker::open(
            paths.root + QStringLiteral("/FrontmostApps.json"), m_platform.workspace, m_platform.clock);
        m_importer = std::make_unique<ScreenshotImporter>(paths, *m_store, m_platform.imageCodec,
                                                          m_platform.applicationIcons, m_platform.clock);
        m_archive = std::make_unique<LibraryArchive>(paths, *m_store, m_importer->epochs());
        m_storage.setLibrary(*m_store, *m_importer, *m_frontmostAppTracker);
        installIntakes();
    } catch (const std::exception& error) {
        setLastError(localizedDescription(error));
    }
}

void AppRuntime::installIntakes()
{
    m_clipboardIntake =
        std::make_unique<ClipboardIntake>(m_settings, *m_frontmostAppTracker, *m_importer, m_flows);
    connect(m_clipboardIntake.get(), &ClipboardIntake::libraryChanged, this, &AppRuntime::libraryChanged);
    connect(m_clipboardIntake.get(), &ClipboardIntake::libraryChanged, &m_storage,
            &StorageMaintenance::clipboardImported);
    connect(m_clipboardIntake.get(), &ClipboardIntake::failed, this, &AppRuntime::setLastError);
    m_clipboardMonitor.handler = [this](const ClipboardPayload& payload) {
        m_clipboardIntake->take(payload);
    };
    m_fileIntake = std::make_unique<FileIntake>(m_settings, *m_frontmostAppTracker, *m_importer, m_flows);
    connect(m_fileIntake.get(), &FileIntake::libraryChanged, this, &AppRuntime::libraryChanged);
    connect(m_fileIntake.get(), &FileIntake::imported, &m_storage, &StorageMaintenance::fileImported);
    connect(m_fileIntake.get(), &FileIntake::failed, this, &AppRuntime::setLastError);
}

QCoro::Task<> AppRuntime::reconcile()
{
    if (!m_store)
        co_return;
    try {
        const bool wasChanged = co_await m_store->reconcileProjection(m_flows.stopToken());
        if (wasChanged) // after lists were shown
            Q_EMIT libraryChanged({LibraryChange::Kind::Opened, {}});
    } catch (const std::exception& error) {
        setLastError(tr("无法同步搜索索引：") + localizedDescription(error));
    }
}

QCoro::Task<> AppRuntime::recoverImports()
{
    if (!m_importer)
        co_return;
    const std::function<std::optional<SourceApplicationSnapshot>(Date)> sourceAt = [this](Date time) {
        return m_frontmostAppTracker->application(time, kRecoveredDistance);
    };
    const bool hasChanged = co_await m_importer->recover(sourceAt);
    if (hasChanged)
        Q_EMIT libraryChanged({LibraryChange::Kind::Added, {}});
}

void AppRuntime::openRequestedWindow()
{
    const QByteArray window = qgetenv("TESSARY_UI_TEST_WINDOW");
    if (window == "quick")
        toggleQuickSearch();
    else if (window == "settings")
        openSettings();
}

QCoro::Task<> AppRuntime::shutDown()
{
    stopMonitoring();
    m_flows.cancel();
    m_localOCR.cancel();
    QTimer patience; // a screenshot folder may hang: nobody waits for it for long
    if (m_fileIntake)
        connect(&patience, &QTimer::timeout, m_fileIntake.get(), &FileIntake::giveUp);
    connect(&patience, &QTimer::timeout, this, [this] { m_exporter.giveUp(); });
    patience.start(kPatience);
    m_opened.reach();
    co_await m_flows.drained();
    co_await m_platform.pasteboard.handOver();
}

// --- watching ---------------------------------------------------------------

void AppRuntime::restartMonitoring()
{
    stopMonitoring();
    if (!m_store)
        return;
    m_clipboardMonitor.start();
    setMonitoring(true);
    m_flows.add(watchFolder());
    qCInfo(lcRuntime, "monitoring started");
}

QCoro::Task<> AppRuntime::watchFolder()
{
    const ScreenshotDirectoryMonitor::Handler handler = [this](const QByteArray& path,
                                                               ScreenshotDirectoryMonitor::Report report) {
        m_fileIntake->importDiscoveredFile(path, report);
    };
    try {
        co_await m_directoryMonitor.start(m_settings.monitoredDirectory(), handler);
    } catch (const std::exception& error) {
        setLastError(tr("剪贴板记录仍在运行，但无法监听截图目录：") + localizedDescription(error));
    }
}

void AppRuntime::stopMonitoring()
{
    m_directoryMonitor.stop();
    if (m_fileIntake)
        m_fileIntake->forgetDiscovered();
    m_clipboardMonitor.stop();
    setMonitoring(false);
}

void AppRuntime::toggleMonitoring()
{
    if (!m_isMonitoring)
        return restartMonitoring();
    stopMonitoring();
    qCInfo(lcRuntime, "monitoring paused");
}

// --- shortcuts, permissions, windows ----------------------------------------

void AppRuntime::registerHotKeys()
{
    m_flows.add(updateHotKeys());
}

QCoro::Task<> AppRuntime::updateHotKeys()
{
    using HotKey = GlobalHotKeyService::HotKey;
    auto entrance = m_hotKeyGate.enter(QStringLiteral("registration")); // one round at a time
    const KeyedGate::Pass pass = co_await entrance;
    QList<GlobalHotKeyService::Binding> bindings;
    bindings.append({HotKey::QuickSearch, m_settings.quickSearchShortcut(), [this] { toggleQuickSearch(); }});
    bindings.append({HotKey::LocalOCR, m_settings.localOCRShortcut(), [this] {
                         m_hotKeyService.releaseKeyboard();
                         performLocalOCR();
                     }});
    bindings.append({HotKey::ToggleMonitoring, m_settings.toggleMonitoringShortcut(), [this] {
                         m_hotKeyService.releaseKeyboard();
                         toggleMonitoring();
                     }});
    m_hotKeyConflicts = co_await m_hotKeyService.registerHotKeys(bindings);
    m_hotKeyAvailable = !m_hotKeyConflicts.contains(HotKey::QuickSearch);
    if (!m_hotKeyConflicts.isEmpty())
        qCWarning(lcRuntime, "global shortcuts that another program holds: %d",
                  static_cast<int>(m_hotKeyConflicts.size()));
    else
        qCInfo(lcRuntime, "global shortcuts registered");
    Q_EMIT hotKeysChanged();
}

QCoro::Task<> AppRuntime::applyLaunchAtLogin(bool launches)
{
    try {
        co_await m_integration.setLaunchAtLogin(launches);
    } catch (const std::exception& error) {
        setLastError(tr("无法更新开机启动设置：") + localizedDescription(error));
    }
}

void AppRuntime::toggleQuickSearch()
{
    if (m_windows.isQuickSearchVisible())
        return m_windows.hideQuickSearch();
    showQuickSearch();
}

void AppRuntime::showQuickSearch()
{
    m_pasteBack.rememberPreviousApplication();
    m_windows.showQuickSearch();
}

void AppRuntime::openSettings()
{
    m_windows.showSettings();
}

void AppRuntime::updateOCRConfiguration()
{
    qCInfo(lcRuntime, "recognition settings changed; they count from the next start");
}

// --- lists ------------------------------------------------------------------

QCoro::Task<QList<ScreenshotRecord>> AppRuntime::search(ListRequest request, std::stop_token stop)
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return {};
    co_return co_await m_store->search(request, stop);
}

QCoro::Task<LibraryFacets> AppRuntime::facets()
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return {};
    co_return co_await m_store->facets();
}

// --- what a person does to an item ------------------------------------------

QCoro::Task<> AppRuntime::copy(ScreenshotRecord record, bool pasteIntoPreviousApplication)
{
    const FlowSet::Stay stay(m_flows);
    const std::optional<QString> message = co_await copyOrExplain(record, pasteIntoPreviousApplication);
    if (message)
        setLastError(*message);
}

QCoro::Task<std::optional<QString>> AppRuntime::copyOrExplain(ScreenshotRecord record,
                                                              bool pasteIntoPreviousApplication)
{
    const FlowSet::Stay stay(m_flows);
    const PasteBack::Result result =
        co_await m_pasteBack.copy(record, pasteIntoPreviousApplication, m_store.get());
    if (!result.isOnPasteboard || !m_store)
        co_return result.message;
    co_await m_store->markUsed(record.id, m_platform.clock.now());
    Q_EMIT libraryChanged({LibraryChange::Kind::Used, {record.id}});
    co_return result.message;
}

void AppRuntime::preview(const ScreenshotRecord& record)
{
    m_windows.showPreview(record);
}

void AppRuntime::revealInFinder(const ScreenshotRecord& record)
{
    m_flows.add(reveal(record));
}

void AppRuntime::revealLibrary()
{
    if (m_paths)
        m_flows.add(m_platform.fileManager.reveal(m_paths->root));
}

QCoro::Task<> AppRuntime::reveal(ScreenshotRecord record)
{
    if (record.contentType == ClipboardContentType::Text) {
        setLastError(tr("文本项目没有对应的文件。"));
        co_return;
    }
    const QStringList places{record.originalPath, record.libraryPath};
    const std::optional<QString> there = co_await m_libraryFiles.firstExisting(places);
    co_await m_platform.fileManager.reveal(there.value_or(record.originalPath));
}

QCoro::Task<> AppRuntime::toggleFavorite(ScreenshotRecord record)
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return;
    co_await m_store->setFavorite(record.id, !record.isFavorite);
    Q_EMIT libraryChanged({LibraryChange::Kind::Edited, {record.id}});
}

QCoro::Task<> AppRuntime::togglePinned(ScreenshotRecord record)
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return;
    co_await m_store->setPinned(record.id, !record.isPinned);
    Q_EMIT libraryChanged({LibraryChange::Kind::Edited, {record.id}});
}

QCoro::Task<> AppRuntime::moveToTrash(ScreenshotRecord record)
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return;
    co_await m_store->moveToTrash(record.id, m_platform.clock.now());
    Q_EMIT libraryChanged({LibraryChange::Kind::Trashed, {record.id}});
}

QCoro::Task<> AppRuntime::saveMetadata(ScreenshotRecord record, QStringList tags, QString note)
{
    const FlowSet::Stay stay(m_flows);
    if (!m_store)
        co_return;
    co_await m_store->updateMetadata(record.id, tags, note);
    Q_EMIT libraryChanged({LibraryChange::Kind::Edited, {record.id}});
}

QCoro::Task<std::optional<ScreenshotRecord>> AppRuntime::item(QUuid id)
{
    const FlowSet::Stay stay(m_flows);
    std::optional<ScreenshotRecord> found;
    if (m_store)
        found = co_await m_store->record(id);
    co_return found;
}

QCoro::Task<QImage> AppRuntime::picturePart(QString path, QRect part, QSize size)
{
    const FlowSet::Stay stay(m_flows);
    const QImage image = co_await m_platform.imageCodec.decodePart(path, part, size);
    co_return image;
}

QCoro::Task<bool> AppRuntime::exportItem(ScreenshotRecord record, QString path, ItemExporter::IfTaken ifTaken)
{
    const FlowSet::Stay stay(m_flows);
    const bool isTaken = co_await m_exporter.isTaken(path);
    if (isTaken && ifTaken == ItemExporter::IfTaken::LeaveIt)
        co_return false;
    const std::optional<ScreenshotRecord> whole = co_await item(record.id);
    co_await m_exporter.write(whole.value_or(record), path);
    co_return true;
}

// --- what is published ------------------------------------------------------

void AppRuntime::setMonitoring(bool isMonitoring)
{
    if (m_isMonitoring == isMonitoring)
        return;
    m_isMonitoring = isMonitoring;
    Q_EMIT isMonitoringChanged();
}

void AppRuntime::setLastError(const QString& message)
{
    qCWarning(lcRuntime, "%s", qUtf8Printable(message));
    m_lastError = message;
    Q_EMIT lastErrorChanged();
}

void AppRuntime::clearLastError()
{
    if (!m_lastError)
        return;
    m_lastError.reset();
    Q_EMIT lastErrorChanged();
}

} // namespace tessary
