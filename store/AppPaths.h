#pragma once

#include <QString>

namespace tessary {

class StandardFolders;

/// Where the library lives on disk. All paths are absolute, without a trailing slash.
struct AppPaths {
    QString root;
    QString originals; ///< Full-size copies of every image item.
    QString thumbnails;
    QString appIcons; ///< Icons of source applications, one an item.
    QString database; ///< The record store; the projection lies beside it.

    /// The person's library, its folders created where missing. Blocks on the disk.
    /// @throws FileError when there is no usable home, or a folder cannot be made.
    [[nodiscard]] static AppPaths live(const StandardFolders& folders);
    /// A library at that root. Folders are made in order, mode 0700, stopping at the first failure;
    /// existing ones are fine. @throws FileError.
    [[nodiscard]] static AppPaths create(const QString& root);

    friend bool operator==(const AppPaths&, const AppPaths&) = default;
};

} // namespace tessary
