#pragma once

#include "store/LibraryCounts.h"

namespace tessary {

/// What the library takes. Sizes are bytes allocated on the disk.
struct StorageUsage {
    qint64 rootBytes = 0; ///< All of it; the others are parts.
    qint64 originalBytes = 0;
    qint64 thumbnailBytes = 0;
    qint64 iconBytes = 0;
    qint64 databaseBytes = 0;
    LibraryCounts items;
    qint64 limitBytes = 0; ///< What the settings allow; 0 means no limit.

    friend bool operator==(const StorageUsage&, const StorageUsage&) = default;
};

} // namespace tessary
