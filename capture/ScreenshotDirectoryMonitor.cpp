#include "capture/ScreenshotDirectoryMonitor.h"

#include "capture/ScreenshotNames.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QPointer>

Q_LOGGING_CATEGORY(lcFolder, "tessary.folder")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kFirstRetry = 1s;
constexpr std::chrono::milliseconds kLongestRetry = 15s;
/// No event tells of a folder that is mounted over, or of a parent that is renamed.
constexpr auto kIdentityCheck = 60s;
constexpr qsizetype kReportedAtOnce = 256; // in one turn of the event loop
/// A folder whose scan takes longer than this rests after it, four times as long, so that scans never take
/// more than a fifth of a processor.
constexpr auto kCheapScan = 10ms;
constexpr int kRestFactor = 4;
constexpr std::chrono::milliseconds kLongestRest = 2s;

} // namespace

ScreenshotDirectoryMonitor::ScreenshotDirectoryMonitor(DirectoryWatcher& watcher, Clock& clock)
    : m_watcher(watcher),
      m_clock(clock)
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, [this] {
        if (const std::optional<Report> wanted = std::exchange(m_wantedScan, std::nullopt))
            requestScan(*wanted);
    });
}

ScreenshotDirectoryMonitor::~ScreenshotDirectoryMonitor()
{
    stop();
}

bool ScreenshotDirectoryMonitor::looksLikeScreenshot(const QString& path)
{
    return beginsLikeScreenshot(QFileInfo(path).completeBaseName());
}

// --- opening ----------------------------------------------------------------

QCoro::Task<> ScreenshotDirectoryMonitor::start(const QString& directory, Handler handler)
{
    stop();
    m_directory = directory;
    m_handler = std::move(handler);
    m_stop = std::stop_source();
    m_queue = std::make_unique<ExpendableLane>(QStringLiteral("com.tessary.directory-monitor"));
    m_folder = std::make_shared<ScreenshotFolder>(QFile::encodeName(directory));
    return open(m_generation);
}

void ScreenshotDirectoryMonitor::stop()
{
    ++m_generation;
    m_stop.request_stop();
    m_watch.reset();
    m_retry.reset();
    m_identityCheck.reset();
    m_rest.stop();
    m_isScanning = false;
    m_wantedScan.reset();
    m_queue.reset();
}

QCoro::Task<> ScreenshotDirectoryMonitor::open(quint64 generation)
{
    const QPointer<ScreenshotDirectoryMonitor> self(this);
    DirectoryWatchRequest request;
    request.folder = m_directory;
    request.concerns = isScreenshotName;
    request.changed = [this, generation](DirectoryChange change) { noteChange(generation, change); };
    request.stop = m_stop.get_token();
    std::unique_ptr<DirectoryWatch> watch;
    std::exception_ptr failure;
    try {
        watch = co_await m_watcher.watch(request);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || generation != m_generation)
        co_return;
    if (failure)
        std::rethrow_exception(failure);
    m_watch = std::move(watch);
    m_retryDelay = kFirstRetry;
    m_identityCheck =
        m_clock.repeat(kIdentityCheck, [this] { QCoro::connect(checkIdentity(m_generation), this, [] {}); });
    qCInfo(lcFolder, "watching the screenshot folder");
    requestScan(Report::InitialScan);
}

// --- a folder that goes away ------------------------------------------------

void ScreenshotDirectoryMonitor::noteChange(quint64 generation, DirectoryChange change)
{
    if (generation != m_generation)
        return;
    if (change == DirectoryChange::FolderGone)
        noteFolderGone();
    else
        requestScan(Report::Change);
}

void ScreenshotDirectoryMonitor::noteFolderGone()
{
    if (!m_watch)
        return;
    qCInfo(lcFolder, "the screenshot folder is gone");
    m_watch.reset();
    m_identityCheck.reset();
    m_retryDelay = kFirstRetry;
    QCoro::connect(reopen(m_generation), this, [] {});
}

QCoro::Task<> ScreenshotDirectoryMonitor::reopen(quint64 generation)
{
    const QPointer<ScreenshotDirectoryMonitor> self(this);
    m_retry.reset();
    bool isOpen = true;
    try {
        co_await open(generation);
    } catch (const std::exception&) {
        isOpen = false;
    }
    if (!isOpen && self && generation == m_generation)
        retryLater();
}

void ScreenshotDirectoryMonitor::retryLater()
{
    m_retry = m_clock.repeat(m_retryDelay, [this] { QCoro::connect(reopen(m_generation), this, [] {}); });
    m_retryDelay = std::min(2 * m_retryDelay, kLongestRetry);
}

QCoro::Task<> ScreenshotDirectoryMonitor::checkIdentity(quint64 generation)
{
    const QPointer<ScreenshotDirectoryMonitor> self(this);
    if (m_isScanning)
        co_return; // which looks as well, or hangs
    auto looking = m_queue->post([folder = m_folder] { return folder->identity(); }, m_stop.get_token());
    std::optional<FolderIdentity> identity;
    try {
        identity = co_await looking;
    } catch (const Abandoned&) {
        co_return;
    }
    if (self && generation == m_generation && m_watch && identity != m_watch->identity())
        noteFolderGone();
}

// --- scanning ---------------------------------------------------------------

void ScreenshotDirectoryMonitor::requestScan(Report report)
{
    if (m_isScanning || m_rest.isActive()) {
        const bool isInitial = report == Report::InitialScan || m_wantedScan == Report::InitialScan;
        m_wantedScan = isInitial ? Report::InitialScan : Report::Change;
        return;
    }
    m_isScanning = true;
    QCoro::connect(scan(m_generation, report), this, [] {});
}

QCoro::Task<> ScreenshotDirectoryMonitor::scan(quint64 generation, Report report)
{
    const QPointer<ScreenshotDirectoryMonitor> self(this);
    auto scanning = m_queue->post([folder = m_folder] { return folder->scan(); }, m_stop.get_token());
    ScreenshotFolder::Scan found;
    try {
        found = co_await scanning;
    } catch (const Abandoned&) {
        co_return;
    }
    if (!self || generation != m_generation)
        co_return;
    m_lastCost = found.cost;
    const bool isWatched = m_watch && found.identity == m_watch->identity();
    deliver(generation, found.paths, isWatched ? report : Report::InitialScan, 0);
    if (self && generation == m_generation && !isWatched)
        noteFolderGone();
}

void ScreenshotDirectoryMonitor::deliver(quint64 generation, QList<QByteArray> paths, Report report,
                                         qsizetype from)
{
    const qsizetype end = std::min(paths.size(), from + kReportedAtOnce);
    for (qsizetype i = from; i < end; ++i) {
        m_handler(paths[i], report);
        if (generation != m_generation)
            return; // the handler stopped the watch
    }
    if (end == paths.size())
        return endScan(m_lastCost > kCheapScan ? std::min(kRestFactor * m_lastCost, kLongestRest) : 0ms);
    const auto goOn = [this, generation, paths, report, end] {
        if (generation == m_generation)
            deliver(generation, paths, report, end);
    };
    QMetaObject::invokeMethod(this, goOn, Qt::QueuedConnection);
}

void ScreenshotDirectoryMonitor::endScan(std::chrono::milliseconds pause)
{
    m_isScanning = false;
    if (pause > 0ms)
        m_rest.start(pause);
    else if (const std::optional<Report> wanted = std::exchange(m_wantedScan, std::nullopt))
        requestScan(*wanted);
}

} // namespace tessary
