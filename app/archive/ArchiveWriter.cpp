#include "app/archive/ArchiveWriter.h"

#include "app/archive/ArchiveError.h"
#include "app/archive/ArchiveLayout.h"
#include "base/AtomicFile.h"

#include <QDir>

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr mode_t kOwnOnly = 0700;

QString path(const QString& folder, const QString& name)
{
    return folder + QLatin1Char('/') + name;
}

FileError writeError(const QString& where)
{
    return FileError::fromErrno(errno, where, FileError::Operation::Write);
}

} // namespace

ArchiveWriter::ArchiveWriter(QString folder) : m_folder(std::move(folder))
{
    if (::mkdir(QFile::encodeName(m_folder).constData(), kOwnOnly) == 0)
        m_isFolderOurs = true;
    else if (errno != EEXIST)
        throw writeError(m_folder);
    try {
        if (!QDir(m_folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
            throw ArchiveError(ArchiveError::Case::FolderNotEmpty, m_folder);
        for (const QLatin1String name :
             {ArchiveLayout::kOriginals, ArchiveLayout::kThumbnails, ArchiveLayout::kAppIcons})
            makeFolder(path(m_folder, name));
        m_list.setFileName(
            path(m_folder, QLatin1Char('.') + ArchiveLayout::kItems + QStringLiteral(".part")));
        if (!m_list.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            throw writeError(m_list.fileName());
    } catch (...) {
        takeBack();
        throw;
    }
}

ArchiveWriter::~ArchiveWriter()
{
    if (!m_isFinished)
        takeBack();
}

void ArchiveWriter::makeFolder(const QString& folder)
{
    if (::mkdir(QFile::encodeName(folder).constData(), kOwnOnly) == 0)
        m_made.append(folder);
    else if (errno == EEXIST) // somebody else writes here at the same time
        throw ArchiveError(ArchiveError::Case::FolderNotEmpty, m_folder);
    else
        throw writeError(folder);
}

void ArchiveWriter::add(const ScreenshotRecord& record)
{
    const ScreenshotRecord relative = ArchiveLayout::relative(record);
    copy(record.libraryPath, relative.libraryPath);
    copy(record.thumbnailPath.value_or(QString()), relative.thumbnailPath.value_or(QString()));
    copy(record.sourceAppIconPath.value_or(QString()), relative.sourceAppIconPath.value_or(QString()));
    const QByteArray line = ArchiveLayout::line(relative);
    if (m_list.write(line) != line.size())
        throw writeError(m_list.fileName());
}

void ArchiveWriter::copy(const QString& source, const QString& relativePath)
{
    if (source.isEmpty())
        return;
    try {
        copyFileAtomically(source, path(m_folder, relativePath), Durability::Process);
        ++m_files;
    } catch (const FileError& error) {
        if (error.which() != FileError::Case::ReadNoSuchFile)
            throw;
        ++m_missingFiles;
    }
}

void ArchiveWriter::finish()
{
    // Everything reaches the disk before the name that says it is complete.
    if (::syncfs(m_list.handle()) != 0)
        throw writeError(m_list.fileName());
    m_list.close();
    if (std::rename(QFile::encodeName(m_list.fileName()).constData(),
                    QFile::encodeName(path(m_folder, ArchiveLayout::kItems)).constData()) != 0)
        throw writeError(path(m_folder, ArchiveLayout::kItems));
    m_isFinished = true;
}

void ArchiveWriter::takeBack()
{
    if (m_list.isOpen())
        m_list.remove();
    for (const QString& folder : m_made)
        QDir(folder).removeRecursively();
    if (m_isFolderOurs)
        QDir().rmdir(m_folder);
}

} // namespace tessary
