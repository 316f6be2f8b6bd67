#include "app/archive/ArchiveReader.h"

#include "app/archive/ArchiveError.h"
#include "app/archive/ArchiveLayout.h"
#include "base/AtomicFile.h"
#include "capture/AcceptedImages.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace tessary {
namespace {

/// @returns whether the path is one name in one of the folder's own folders.
bool isInside(const QString& path)
{
    const QStringList parts = path.split(QLatin1Char('/'));
    return parts.size() == 2 && !parts.last().isEmpty() && parts.last() != QLatin1String("..") &&
           (parts.first() == ArchiveLayout::kOriginals || parts.first() == ArchiveLayout::kThumbnails ||
            parts.first() == ArchiveLayout::kAppIcons);
}

} // namespace

ArchiveReader::ArchiveReader(QString folder)
    : m_folder(std::move(folder)),
      m_list(m_folder + QLatin1Char('/') + ArchiveLayout::kItems)
{
    if (!QFileInfo(m_list.fileName()).isFile())
        throw ArchiveError(ArchiveError::Case::NotAnExport, m_folder);
    if (!m_list.open(QIODevice::ReadOnly))
        throw FileError::fromErrno(errno, m_list.fileName(), FileError::Operation::Read);
}

std::optional<ArchiveReader::Entry> ArchiveReader::next()
{
    while (!m_list.atEnd()) {
        const QByteArray line = m_list.readLine();
        if (line.isEmpty() && m_list.error() != QFileDevice::NoError)
            throw FileError(FileError::Case::ReadUnknown, m_list.fileName());
        ++m_line;
        if (!line.trimmed().isEmpty())
            return Entry{m_line, ArchiveLayout::item(line)};
    }
    return std::nullopt;
}

ScreenshotRecord ArchiveReader::rebased(ScreenshotRecord listed, const AppPaths& library)
{
    const QString name = QLatin1Char('/') + identifierText(listed.id) + QLatin1Char('.');
    if (!listed.libraryPath.isEmpty()) {
        QString extension = QFileInfo(listed.libraryPath).suffix().toLower();
        if (!acceptedImageExtensions().contains(extension))
            extension = acceptedImageExtensions().constFirst();
        listed.libraryPath = library.originals + name + extension;
    }
    if (listed.thumbnailPath)
        listed.thumbnailPath = library.thumbnails + name + QStringLiteral("jpg");
    if (listed.sourceAppIconPath)
        listed.sourceAppIconPath = library.appIcons + name + QStringLiteral("png");
    return listed;
}

qint64 ArchiveReader::copyFiles(const ScreenshotRecord& listed, const ScreenshotRecord& rebased) const
{
    qint64 missing = 0;
    if (!listed.libraryPath.isEmpty())
        missing += copy(listed.libraryPath, rebased.libraryPath) ? 0 : 1;
    if (listed.thumbnailPath)
        missing += copy(*listed.thumbnailPath, *rebased.thumbnailPath) ? 0 : 1;
    if (listed.sourceAppIconPath)
        missing += copy(*listed.sourceAppIconPath, *rebased.sourceAppIconPath) ? 0 : 1;
    return missing;
}

bool ArchiveReader::copy(const QString& listed, const QString& destination) const
{
    const QString source = m_folder + QLatin1Char('/') + listed;
    const QFileInfo file(source);
    if (!isInside(listed) || file.isSymLink() || !file.isFile())
        return false;
    copyFileAtomically(source, destination, Durability::PowerCut);
    return true;
}

} // namespace tessary
