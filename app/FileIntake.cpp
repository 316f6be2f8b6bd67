#include "app/FileIntake.h"

#include "app/AppSettings.h"
#include "base/FileError.h"
#include "base/FlowSet.h"
#include "capture/FileFacts.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"

#include <QDir>
#include <QFile>

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
      m_flows(flows),
      m_lane(QStringLiteral("tessary.intake"))
{
}

void FileIntake::importDiscoveredFile(const QByteArray& path, ScreenshotDirectoryMonitor::Report report)
{
    m_flows.add(importDiscovered(QFile::decodeName(path), report));
}

QCoro::Task<> FileIntake::importDiscovered(QString path, ScreenshotDirectoryMonitor::Report report)
{
    const bool isInitial = report == ScreenshotDirectoryMonitor::Report::InitialScan;
    try {
        co_await take(path, isInitial ? CountDuplicate::No : CountDuplicate::Yes);
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("无法导入截图：") + localizedDescription(error));
    }
}

QCoro::Task<FileImport> FileIntake::importFile(QByteArray path)
{
    const FlowSet::Stay stay(m_flows);
    co_return co_await take(QFile::decodeName(path), CountDuplicate::Yes);
}

bool FileIntake::isExcluded(const QString& path) const
{
    const QString standardised = QDir::cleanPath(path);
    const QStringList folders = m_settings.excludedDirectories();
    return std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
        return !folder.isEmpty() && standardised.startsWith(QDir::cleanPath(folder));
    });
}

QCoro::Task<FileImport> FileIntake::take(QString path, CountDuplicate countDuplicate)
{
    if (isExcluded(path))
        co_return FileImport{FileImport::Outcome::Excluded, {}};
    auto looking = m_lane.post([path] { return factsOf(path); });
    const FileFacts facts = co_await looking;
    if (facts.size < 0)
        throw FileError(FileError::Case::ReadNoSuchFile, path);
    if (!facts.isRegular)
        co_return FileImport{FileImport::Outcome::NotAccepted, {}};
    const std::optional<Date> captured = facts.created ? facts.created : facts.modified;
    std::optional<SourceApplicationSnapshot> source;
    if (captured)
        source = m_tracker.application(*captured, kMaxDistance);
    if (source && m_settings.excludes(source->bundleIdentifier))
        co_return FileImport{FileImport::Outcome::Excluded, {}};
    const FileImport result = co_await m_importer.takeFile(path, source, countDuplicate);
    tell(result, countDuplicate);
    co_return result;
}

void FileIntake::tell(const FileImport& result, CountDuplicate countDuplicate)
{
    const QList<QUuid> items = result.id ? QList{*result.id} : QList<QUuid>();
    if (result.outcome == FileImport::Outcome::NotAccepted)
        return;
    if (result.outcome == FileImport::Outcome::Added)
        Q_EMIT libraryChanged({LibraryChange::Kind::Added, items});
    else if (countDuplicate == CountDuplicate::Yes)
        Q_EMIT libraryChanged({LibraryChange::Kind::Repeated, items});
    Q_EMIT imported();
}

} // namespace tessary
