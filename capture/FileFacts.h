#pragma once

#include "base/Date.h"

#include <QString>

#include <optional>

namespace tessary {

/// What the file system says about a file; of a link, about the file that it leads to.
struct FileFacts {
    std::optional<Date> created; ///< Absent where the file system does not keep it.
    std::optional<Date> modified;
    qint64 size = -1;       ///< Bytes; -1 when unknown.
    bool isRegular = false; ///< Not a folder, a pipe or a device.
};

/// Blocks on the disk.
[[nodiscard]] FileFacts factsOf(const QString& path);
/// Bytes; -1 while it is unknown. Blocks on the disk.
[[nodiscard]] qint64 fileSize(const QString& path);

} // namespace tessary
