#include "app/LibraryFiles.h"

#include "capture/ImportJournal.h"
#include "platform/StandardFolders.h"

#include <QFile>

namespace tessary {

LibraryFiles::LibraryFiles() : m_lane(QStringLiteral("tessary.files")) {}

QCoro::Task<AppPaths> LibraryFiles::prepare(const StandardFolders& folders)
{
    auto preparing = m_lane.post([&folders] {
        AppPaths paths = AppPaths::live(folders);
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

QCoro::Task<> LibraryFiles::removeFilesOf(QList<ScreenshotRecord> records)
{
    auto removing = m_lane.post([records] {
        for (const ScreenshotRecord& record : records) {
            if (!record.libraryPath.isEmpty())
                QFile::remove(record.libraryPath);
            if (record.thumbnailPath)
                QFile::remove(*record.thumbnailPath);
            if (record.sourceAppIconPath)
                QFile::remove(*record.sourceAppIconPath);
        }
    });
    co_await removing;
}

} // namespace tessary
