#pragma once

#include "store/ScreenshotRecord.h"

#include <QFile>

namespace tessary {

/// Writes a library into a folder. The list of items gets its name at the very end, so that a folder which
/// has it is complete; until `finish` everything is taken back on destruction. Blocks on the disk.
class ArchiveWriter {
public:
    /// @param folder absolute; made where it is missing (its parent has to be there).
    /// @throws FileError; ArchiveError (FolderNotEmpty).
    explicit ArchiveWriter(QString folder);
    ~ArchiveWriter();
    ArchiveWriter(const ArchiveWriter&) = delete;
    ArchiveWriter& operator=(const ArchiveWriter&) = delete;

    /// Copies the item's files and writes its line. @throws FileError.
    void add(const ScreenshotRecord& record);
    /// @throws FileError.
    void finish();

    [[nodiscard]] qint64 files() const { return m_files; }
    /// Files that items speak of and that are not in the library.
    [[nodiscard]] qint64 missingFiles() const { return m_missingFiles; }

private:
    void makeFolder(const QString& path);
    void copy(const QString& source, const QString& relativePath);
    void takeBack();

    QString m_folder;
    bool m_isFolderOurs = false;
    bool m_isFinished = false;
    QStringList m_made; // folders, in order
    QFile m_list;
    qint64 m_files = 0;
    qint64 m_missingFiles = 0;
};

} // namespace tessary
