#pragma once

#include "app/StorageUsage.h"
#include "base/SerialLane.h"
#include "store/AppPaths.h"

#include <qcoro/qcorotask.h>

#include <stop_token>

namespace tessary {

/// Measures folders on a thread of its own, since a large library keeps a disk busy for a while. To be called
/// on the main thread.
class StorageMeter {
public:
    StorageMeter() : m_lane(QStringLiteral("tessary-measure")) {}

    /// Bytes allocated below the folder; nothing when stopped.
    [[nodiscard]] QCoro::Task<std::optional<qint64>> allocatedSize(QString folder, std::stop_token stop);
    /// The sizes, without the counts and the limit. Of no use when stopped.
    [[nodiscard]] QCoro::Task<StorageUsage> sizes(AppPaths paths, std::stop_token stop);

private:
    SerialLane m_lane;
};

} // namespace tessary
