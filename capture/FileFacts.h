#pragma once

#include "base/Date.h"

#include <QString>

#include <optional>

namespace tessary {

/// What the file system says about a file.
struct FileFacts {
    std::optional<Date> created; ///< Absent where the file system does not keep it.
    std::optional<Date> modified;
    qint64 size = -1; ///< Bytes; -1 when unknown.
};

/// Blocks on the disk.
[[nodiscard]] FileFacts factsOf(const QString& path);
/// Bytes; -1 while it is unknown. Blocks on the disk.
[[nodiscard]] qint64 fileSize(const QString& path);

} // namespace tessary
