#include "app/FileIntake.h"

#include "app/AppSettings.h"
#include "base/FileError.h"
#include "base/FlowSet.h"
#include "capture/FrontmostAppTracker.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcIntake, "tessary.intake")

namespace tessary {
namespace {

/// How long before a screenshot its application may last have been noticed, in seconds. The heartbeat
/// comes every 300.
constexpr double kMaxDistance = 600;
/// Most of the time of an import is the wait for its file to be complete, which costs next to nothing.
constexpr int kMostAtOnce = 32;

std::shared_ptr<ExpendableLane> newLane()
{
    return std::make_shared<ExpendableLane>(QStringLiteral("tessary.intake"));
}

QCoro::Task<FileFacts> lookAt(ForeignFile file)
{
    auto looking = file.lane->post([path = file.path] { return factsOf(path); }, file.giveUp);
    co_return co_await looking;
}

} // namespace

struct FileIntake::Folder {
    DiscoveredFiles files{kMostAtOnce};
    std::shared_ptr<ExpendableLane> lane = newLane();
};

FileIntake::FileIntake(const AppSettings& settings, const FrontmostAppTracker& tracker,
                       ScreenshotImporter& importer, FlowSet& flows)
    : m_settings(settings),
      m_tracker(tracker),
      m_importer(importer),
      m_flows(flows),
      m_folder(std::make_shared<Folder>())
{
}

FileIntake::~FileIntake() = default;

bool FileIntake::isExcluded(const QString& path) const
{
    const QStringList folders = m_settings.excludedDirectories();
    if (folders.isEmpty())
        return false;
    const QString standardised = QDir::cleanPath(path);
    return std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
        return !folder.isEmpty() && standardised.startsWith(QDir::cleanPath(folder));
    });
}

// --- files that were found --------------------------------------------------

void FileIntake::importDiscoveredFile(const QByteArray& path, ScreenshotDirectoryMonitor::Report report)
{
    if (isExcluded(QFile::decodeName(path)))
        return;
    const bool isInitial = report == ScreenshotDirectoryMonitor::Report::InitialScan;
    m_folder->files.add({path, isInitial ? CountDuplicate::No : CountDuplicate::Yes});
    advance();
}

void FileIntake::forgetDiscovered()
{
    const auto next = std::make_shared<Folder>();
    next->files = m_folder->files.renewed();
    m_folder = next;
}

void FileIntake::giveUp()
{
    m_giveUp.request_stop();
}

void FileIntake::advance()
{
    if (m_isAdvancing) // an import that ends at once comes back here
        return;
    m_isAdvancing = true;
    while (const std::optional<DiscoveredFiles::Entry> entry = m_folder->files.begin())
        m_flows.add(importDiscovered(m_folder, *entry));
    m_isAdvancing = false;
}

QCoro::Task<> FileIntake::importDiscovered(std::shared_ptr<Folder> folder, DiscoveredFiles::Entry entry)
{
    const ForeignFile file{entry.path, folder->lane, m_giveUp.get_token()};
    std::optional<FileStamp> stamp;
    QString message;
    try {
        const TakenFile taken = co_await take(file, entry.countDuplicate, folder);
        if (taken.stamp.size >= 0)
            stamp = taken.stamp;
    } catch (const Abandoned& error) {
        qCWarning(lcIntake, "a screenshot was given up: %s", error.what());
    } catch (const std::exception& error) {
        message = tr("无法导入截图：") + localizedDescription(error);
    }
    if (!message.isEmpty())
        co_await report(file, message);
    folder->files.finish(entry.path, stamp);
    if (folder == m_folder)
        advance();
}

/// A screenshot that is gone again was not to be kept: that is no failure.
QCoro::Task<> FileIntake::report(ForeignFile file, QString message)
{
    bool isThere = true;
    try {
        const FileFacts facts = co_await lookAt(file);
        isThere = facts.size >= 0;
    } catch (const Abandoned&) {
        isThere = false;
    }
    if (isThere)
        Q_EMIT failed(message);
}

// --- files that a person names ----------------------------------------------

QCoro::Task<FileImport> FileIntake::importFile(QByteArray path)
{
    const FlowSet::Stay stay(m_flows);
    const ForeignFile file{path, newLane(), m_giveUp.get_token()};
    if (isExcluded(QFile::decodeName(path)))
        co_return FileImport{FileImport::Outcome::Excluded, {}};
    const TakenFile taken = co_await take(file, CountDuplicate::Yes, nullptr);
    co_return taken.import;
}

// --- both -------------------------------------------------------------------

QCoro::Task<TakenFile> FileIntake::take(ForeignFile file, CountDuplicate countDuplicate,
                                        std::shared_ptr<Folder> folder)
{
    TakenFile nothing;
    const FileFacts facts = co_await lookAt(file);
    if (folder && folder->files.isTaken(file.path, facts.stamp))
        co_return nothing; // reported again while it was imported
    if (facts.size < 0)
        throw FileError(FileError::Case::ReadNoSuchFile, QFile::decodeName(file.path));
    if (!facts.isRegular)
        co_return nothing;
    const std::optional<Date> captured = facts.created ? facts.created : facts.modified;
    std::optional<SourceApplicationSnapshot> source;
    if (captured)
        source = m_tracker.application(*captured, kMaxDistance);
    if (source && m_settings.excludes(source->bundleIdentifier)) {
        nothing.import.outcome = FileImport::Outcome::Excluded;
        co_return nothing;
    }
    const TakenFile taken = co_await m_importer.takeFile(file, source, countDuplicate);
    tell(taken.import, countDuplicate);
    co_return taken;
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
