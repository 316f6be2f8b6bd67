#pragma once

#include "base/SerialLane.h"
#include "platform/DirectoryWatch.h"

#include <QDateTime>
#include <QHash>
#include <QObject>

#include <functional>
#include <memory>

namespace tessary {

/// Watches one folder and reports every file in it that looks like a screenshot: once for each that is
/// there when watching starts, and again whenever one is added or changed. Main thread only; the folder
/// is listed on a lane.
class ScreenshotDirectoryMonitor : public QObject {
    Q_OBJECT
public:
    enum class Report { InitialScan, Change };
    using Handler = std::function<void(QString path, Report report)>;

    explicit ScreenshotDirectoryMonitor(DirectoryWatcher& watcher);
    ~ScreenshotDirectoryMonitor() override;

    /// Ends an earlier watch. @throws FileError when the folder cannot be watched; then nothing is.
    void start(const QString& directory, Handler handler);
    void stop();
    [[nodiscard]] bool isWatching() const { return m_watch != nullptr; }

    /// Whether a file of that name is taken for a screenshot, its kind aside: by its beginning.
    [[nodiscard]] static bool looksLikeScreenshot(const QString& path);

private:
    struct Entry {
        QString path;
        QDateTime changed;
    };

    void scan(Report report);
    void report(const QList<Entry>& entries, Report report);
    [[nodiscard]] static QList<Entry> screenshotsIn(const QString& directory);

    DirectoryWatcher& m_watcher;
    std::unique_ptr<DirectoryWatch> m_watch;
    QHash<QString, QDateTime> m_knownFiles; // by path, with the change date last reported
    QString m_directory;
    Handler m_handler;
    quint64 m_generation = 0; // of the watch; scans of an older one are void
    SerialLane m_queue;
};

} // namespace tessary
