#include "app/FileIntake.h"

#include "app/AppSettings.h"
#include "base/Error.h"
#include "base/FlowSet.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"

#include <QDir>
#include <QFileInfo>

namespace tessary {
namespace {

/// How long before a screenshot its application may last have been noticed, in seconds. The heartbeat
/// comes every 300.
constexpr double kMaxDistance = 600;

} // namespace

FileIntake::FileIntake(const AppSettings& settings, const FrontmostAppTracker& tracker,
                       ScreenshotImporter& importer, FlowSet& flows)
    : m_settings(settings),
      m_tracker(tracker),
      m_importer(importer),
      m_flows(flows)
{
}

void FileIntake::importDiscoveredFile(const QString& path, ScreenshotDirectoryMonitor::Report report)
{
    if (!isExcluded(path))
        m_flows.add(import(path, report));
}

bool FileIntake::isExcluded(const QString& path) const
{
    const QString standardised = QDir::cleanPath(path);
    const QStringList folders = m_settings.excludedDirectories();
    return std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
        return !folder.isEmpty() && standardised.startsWith(QDir::cleanPath(folder));
    });
}

QCoro::Task<> FileIntake::import(QString path, ScreenshotDirectoryMonitor::Report report)
{
    const QFileInfo file(path);
    const QDateTime captured = file.birthTime().isValid() ? file.birthTime() : file.lastModified();
    const std::optional<SourceApplicationSnapshot> source =
        m_tracker.application(Date::fromDateTime(captured), kMaxDistance);
    if (source && m_settings.excludes(source->bundleIdentifier))
        co_return;
    const bool isInitial = report == ScreenshotDirectoryMonitor::Report::InitialScan;
    const CountDuplicate countDuplicate = isInitial ? CountDuplicate::No : CountDuplicate::Yes;
    try {
        const ScreenshotImporter::Record record =
            co_await m_importer.importFile(path, source, countDuplicate);
        if (record)
            Q_EMIT libraryChanged({LibraryChange::Kind::Added, {record->id}});
        else if (!isInitial)
            Q_EMIT libraryChanged({LibraryChange::Kind::Repeated, {}});
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("无法导入截图：") + localizedDescription(error));
    }
}

} // namespace tessary
