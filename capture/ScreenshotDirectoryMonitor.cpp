#include "capture/ScreenshotDirectoryMonitor.h"

#include "capture/AcceptedImages.h"

#include <QDirIterator>
#include <QFileInfo>

#include <array>

namespace tessary {
namespace {

const std::array<QString, 9>& screenshotPrefixes()
{
    static const std::array<QString, 9> prefixes{QStringLiteral("screenshot"),
                                                 QStringLiteral("screen shot"),
                                                 QStringLiteral("截屏"),
                                                 QStringLiteral("屏幕快照"),
                                                 QStringLiteral("螢幕截圖"),
                                                 QStringLiteral("bildschirmfoto"),
                                                 QStringLiteral("captura de pantalla"),
                                                 QStringLiteral("capture d’écran"),
                                                 QStringLiteral("capture d'ecran")};
    return prefixes;
}

} // namespace

ScreenshotDirectoryMonitor::ScreenshotDirectoryMonitor(DirectoryWatcher& watcher)
    : m_watcher(watcher),
      m_queue(QStringLiteral("com.tessary.directory-monitor"))
{
}

ScreenshotDirectoryMonitor::~ScreenshotDirectoryMonitor() = default;

void ScreenshotDirectoryMonitor::start(const QString& directory, Handler handler)
{
    stop();
    m_directory = directory;
    m_handler = std::move(handler);
    ++m_generation;
    m_watch = m_watcher.watch(directory, [this] { scan(Report::Change); });
    scan(Report::InitialScan);
}

void ScreenshotDirectoryMonitor::stop()
{
    m_watch.reset();
    ++m_generation;
}

bool ScreenshotDirectoryMonitor::looksLikeScreenshot(const QString& path)
{
    const QString name = QFileInfo(path).completeBaseName().toLower();
    const auto& prefixes = screenshotPrefixes();
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&](const QString& p) { return name.startsWith(p); });
}

void ScreenshotDirectoryMonitor::scan(Report report)
{
    // The answer finds its way back by the context object: no watch outlives the monitor.
    m_queue.postDetached([this, report, directory = m_directory, generation = m_generation] {
        const QList<Entry> entries = screenshotsIn(directory);
        QMetaObject::invokeMethod(
            this,
            [this, report, generation, entries] {
                if (generation == m_generation)
                    this->report(entries, report);
            },
            Qt::QueuedConnection);
    });
}

void ScreenshotDirectoryMonitor::report(const QList<Entry>& entries, Report report)
{
    const quint64 generation = m_generation;
    for (const Entry& entry : entries) {
        const auto known = m_knownFiles.constFind(entry.path);
        if (known != m_knownFiles.constEnd() && *known == entry.changed)
            continue;
        m_knownFiles.insert(entry.path, entry.changed);
        m_handler(entry.path, report);
        if (generation != m_generation)
            return; // the handler stopped the watch
    }
}

QList<ScreenshotDirectoryMonitor::Entry> ScreenshotDirectoryMonitor::screenshotsIn(const QString& directory)
{
    QList<Entry> entries;
    QDirIterator files(directory, QDir::Files | QDir::NoDotAndDotDot);
    while (files.hasNext()) {
        const QString path = files.next();
        if (!acceptedImageExtensions().contains(QFileInfo(path).suffix().toLower()) ||
            !looksLikeScreenshot(path))
            continue;
        const QFileInfo file = files.fileInfo();
        const QDateTime changed = file.lastModified().isValid() ? file.lastModified() : file.birthTime();
        entries.append({path, changed});
    }
    return entries;
}

} // namespace tessary
