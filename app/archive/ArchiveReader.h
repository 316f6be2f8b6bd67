#pragma once

#include "store/AppPaths.h"
#include "store/ScreenshotRecord.h"

#include <QFile>

namespace tessary {

/// Reads a library that was exported into a folder. Blocks on the disk.
///
/// What the list says about paths is trusted no further than its file names: nothing outside the folder is
/// read, nothing outside the library written.
class ArchiveReader {
public:
    /// @throws ArchiveError (NotAnExport), FileError.
    explicit ArchiveReader(QString folder);

    /// One line of the list.
    struct Entry {
        qint64 line = 0;                        ///< From 1.
        std::optional<ScreenshotRecord> record; ///< As listed; nothing when the line holds no item.
    };
    /// @returns the next line that is not blank; nothing at the end. @throws FileError.
    [[nodiscard]] std::optional<Entry> next();

    /// The item with the paths that its files get in that library.
    [[nodiscard]] static ScreenshotRecord rebased(ScreenshotRecord listed, const AppPaths& library);
    /// Copies the item's files, those that are there, to where the rebased record says.
    /// @returns how many of them are missing. @throws FileError.
    qint64 copyFiles(const ScreenshotRecord& listed, const ScreenshotRecord& rebased) const;

private:
    [[nodiscard]] bool copy(const QString& listed, const QString& destination) const;

    QString m_folder;
    QFile m_list;
    qint64 m_line = 0;
};

} // namespace tessary
