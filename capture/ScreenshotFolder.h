#pragma once

#include "platform/DirectoryWatch.h"

#include <QHash>
#include <QList>

#include <chrono>
#include <optional>

namespace tessary {

/// The screenshots of one folder, as far as they have been seen. Blocks on the disk; one thread at a time.
class ScreenshotFolder {
public:
    struct Scan {
        std::optional<FolderIdentity> identity; ///< Absent when the folder could not be listed.
        QList<QByteArray> paths;                ///< In listing order, as the file system has them, any bytes.
        std::chrono::milliseconds cost{};       ///< How long it took.
    };

    explicit ScreenshotFolder(QByteArray path);

    /// Lists the screenshots that are new, or changed, since the last scan.
    [[nodiscard]] Scan scan();
    /// Which folder the path leads to now; nothing when to none.
    [[nodiscard]] std::optional<FolderIdentity> identity() const;

private:
    [[nodiscard]] bool isNews(int folder, const QByteArray& name);

    QByteArray m_path;
    QHash<QByteArray, qint64> m_known; // by name, when last changed, in nanoseconds
};

} // namespace tessary
