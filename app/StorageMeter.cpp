#include "app/StorageMeter.h"

#include "base/AllocatedSize.h"

#include <QFileInfo>

namespace tessary {

QCoro::Task<std::optional<qint64>> StorageMeter::allocatedSize(QString folder, std::stop_token stop)
{
    auto measuring = m_lane.post([folder, stop] { return tessary::allocatedSize(folder, stop); });
    const qint64 bytes = co_await measuring;
    co_return stop.stop_requested() ? std::nullopt : std::optional(bytes);
}

QCoro::Task<StorageUsage> StorageMeter::sizes(AppPaths paths, std::stop_token stop)
{
    auto measuring = m_lane.post([paths, stop] {
        StorageUsage usage;
        usage.rootBytes = tessary::allocatedSize(paths.root, stop);
        usage.originalBytes = tessary::allocatedSize(paths.originals, stop);
        usage.thumbnailBytes = tessary::allocatedSize(paths.thumbnails, stop);
        usage.iconBytes = tessary::allocatedSize(paths.appIcons, stop);
        const QString databases = QFileInfo(paths.database).completeBaseName() + QLatin1Char('.');
        usage.databaseBytes = allocatedSizeOfFiles(paths.root, databases);
        return usage;
    });
    co_return co_await measuring;
}

} // namespace tessary
