#pragma once

#include "base/ExpendableLane.h"
#include "capture/ScreenshotFolder.h"
#include "platform/Clock.h"
#include "platform/DirectoryWatch.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace tessary {

/// Watches one folder and reports every file in it that looks like a screenshot: once for each that is
/// there when watching starts, and again whenever one is added or changed.
///
/// When the folder goes away, or another takes its place, the watch goes on with whatever folder is at the
/// path, as soon as there is one; what is in there then and was not seen before is reported as by a first
/// scan. Main thread only; the folder is opened and listed on a lane, and one that hangs holds up nobody.
class ScreenshotDirectoryMonitor : public QObject {
    Q_OBJECT
public:
    enum class Report { InitialScan, Change };
    /// @param path as the file system has it, any bytes.
    using Handler = std::function<void(QByteArray path, Report report)>;

    ScreenshotDirectoryMonitor(DirectoryWatcher& watcher, Clock& clock);
    ~ScreenshotDirectoryMonitor() override;

    /// Ends an earlier watch, also one that is still being opened; its `start` then ends without a word.
    /// @throws FileError when the folder cannot be watched; then nothing is.
    [[nodiscard]] QCoro::Task<> start(const QString& directory, Handler handler);
    void stop();
    /// Whether the folder is there and watched.
    [[nodiscard]] bool isWatching() const { return m_watch != nullptr; }

    /// Whether a file of that name is taken for a screenshot, its kind aside: by its beginning.
    [[nodiscard]] static bool looksLikeScreenshot(const QString& path);

private:
    QCoro::Task<> open(quint64 generation);
    QCoro::Task<> reopen(quint64 generation);
    QCoro::Task<> scan(quint64 generation, Report report);
    QCoro::Task<> checkIdentity(quint64 generation);
    void noteChange(quint64 generation, DirectoryChange change);
    void noteFolderGone();
    void retryLater();
    void requestScan(Report report);
    void deliver(quint64 generation, QList<QByteArray> paths, Report report, qsizetype from);
    void endScan(std::chrono::milliseconds pause);

    DirectoryWatcher& m_watcher;
    Clock& m_clock;
    std::unique_ptr<DirectoryWatch> m_watch;
    QString m_directory;
    Handler m_handler;
    quint64 m_generation = 0; // of the watch; whatever belongs to an older one is void
    std::stop_source m_stop;  // of the generation
    std::unique_ptr<ExpendableLane> m_queue;
    std::shared_ptr<ScreenshotFolder> m_folder; // touched only on the lane
    std::unique_ptr<RepeatingTimer> m_retry;    // while the folder is away
    std::chrono::milliseconds m_retryDelay{};
    std::unique_ptr<RepeatingTimer> m_identityCheck;
    bool m_isScanning = false;
    std::optional<Report> m_wantedScan; // asked for while another is running, or rests
    QTimer m_rest;                      // after a scan
    std::chrono::milliseconds m_lastCost{};
};

} // namespace tessary
