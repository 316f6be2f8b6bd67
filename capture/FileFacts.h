#pragma once

#include "base/Date.h"

#include <QString>

#include <optional>

namespace tessary {

/// A state of a file's content, as far as the file system tells them apart.
struct FileStamp {
    qint64 modified = 0; ///< Nanoseconds.
    qint64 size = -1;    ///< Bytes; -1 when unknown.
    quint64 inode = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// What the file system says about a file; of a link, about the file that it leads to.
struct FileFacts {
    std::optional<Date> created; ///< Absent where the file system does not keep it.
    std::optional<Date> modified;
    qint64 size = -1;       ///< Bytes; -1 when unknown.
    bool isRegular = false; ///< Not a folder, a pipe or a device.
    FileStamp stamp;
};

/// Blocks on the disk.
[[nodiscard]] FileFacts factsOf(const QString& path);
[[nodiscard]] FileFacts factsOf(const QByteArray& path);
/// Bytes; -1 while it is unknown. Blocks on the disk.
[[nodiscard]] qint64 fileSize(const QString& path);

} // namespace tessary
