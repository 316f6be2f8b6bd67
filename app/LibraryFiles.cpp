#include "app/LibraryFiles.h"

#include "base/AtomicFile.h"
#include "capture/ClipboardImageName.h"
#include "capture/ImportJournal.h"
#include "platform/StandardFolders.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace tessary {
namespace {

QStringList itemFolders(const AppPaths& paths)
{
    return {paths.originals, paths.thumbnails, paths.appIcons};
}

/// A record may name any file, if somebody else wrote it; only what lies in our folders is ours to remove.
bool isOurs(const AppPaths& paths, const QString& file)
{
    return itemFolders(paths).contains(QFileInfo(QDir::cleanPath(file)).path());
}

QString notePath(const AppPaths& paths)
{
    return paths.root + QStringLiteral("/.removing");
}

/// Takes errors until it is done, and tells the first.
class Remover {
public:
    void remove(const QFileInfo& entry)
    {
        try {
            if (entry.isDir() && !entry.isSymLink() && !QDir(entry.filePath()).removeRecursively())
                throw FileError(FileError::Case::WriteUnknown, entry.filePath());
            if (!entry.isDir() || entry.isSymLink())
                removeFile(entry.filePath());
        } catch (const FileError& error) {
            if (!m_first)
                m_first = error;
        }
    }
    void finish() const
    {
        if (m_first)
            throw FileError(*m_first);
    }

private:
    std::optional<FileError> m_first;
};

void emptyFolders(const AppPaths& paths)
{
    constexpr QDir::Filters kEverything =
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    Remover remover;
    for (const QString& folder : itemFolders(paths)) {
        for (const QFileInfo& entry : QDir(folder).entryInfoList(kEverything, QDir::Unsorted))
            remover.remove(entry);
    }
    for (const QFileInfo& entry : QDir(paths.root).entryInfoList(QDir::Files | QDir::Hidden)) {
        if (!nominalImageName(entry.fileName()).isEmpty())
            remover.remove(entry);
    }
    remover.finish();
}

} // namespace

LibraryFiles::LibraryFiles() : m_lane(QStringLiteral("tessary.files")) {}

QCoro::Task<AppPaths> LibraryFiles::prepare(const StandardFolders& folders)
{
    auto preparing = m_lane.post([this, &folders] {
        AppPaths paths = AppPaths::live(folders);
        if (!m_lock)
            m_lock = std::make_unique<LibraryLock>(paths.root);
        ImportJournal(paths).sweepRoot(); // now, before anything of ours writes there
        return paths;
    });
    co_return co_await preparing;
}

QCoro::Task<std::optional<QString>> LibraryFiles::firstExisting(QStringList paths)
{
    auto looking = m_lane.post([paths]() -> std::optional<QString> {
        for (const QString& path : paths) {
            if (!path.isEmpty() && QFile::exists(path))
                return path;
        }
        return std::nullopt;
    });
    co_return co_await looking;
}

QCoro::Task<> LibraryFiles::removeFiles(AppPaths paths, QStringList files)
{
    auto removing = m_lane.post([paths, files] {
        for (const QString& file : files) {
            if (isOurs(paths, file))
                QFile::remove(file);
        }
    });
    co_await removing;
}

QCoro::Task<> LibraryFiles::beginRemoval(AppPaths paths)
{
    auto noting = m_lane.post([paths] { (void)QFile(notePath(paths)).open(QIODevice::WriteOnly); });
    co_await noting;
}

QCoro::Task<> LibraryFiles::endRemoval(AppPaths paths)
{
    auto forgetting = m_lane.post([paths] { QFile::remove(notePath(paths)); });
    co_await forgetting;
}

QCoro::Task<bool> LibraryFiles::wasRemovalInterrupted(AppPaths paths)
{
    auto looking = m_lane.post([paths] { return QFile::exists(notePath(paths)); });
    co_return co_await looking;
}

QCoro::Task<QList<QUuid>> LibraryFiles::owners(AppPaths paths)
{
    auto listing = m_lane.post([paths] {
        QSet<QUuid> ids;
        for (const QString& folder : itemFolders(paths)) {
            for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Unsorted))
                ids.insert(QUuid::fromString(QFileInfo(name).completeBaseName()));
        }
        ids.remove(QUuid()); // what has another name is nobody's
        return ids.values();
    });
    co_return co_await listing;
}

QCoro::Task<> LibraryFiles::removeFilesOf(AppPaths paths, QList<QUuid> owners)
{
    auto removing = m_lane.post([paths, owners] {
        const ImportJournal journal(paths);
        for (const QUuid& owner : owners)
            journal.discard(owner);
    });
    co_await removing;
}

QCoro::Task<> LibraryFiles::removeAllFiles(AppPaths paths)
{
    auto removing = m_lane.post([paths] { emptyFolders(paths); });
    co_await removing;
}

} // namespace tessary
