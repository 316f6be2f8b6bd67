#include "capture/ImportJournal.h"

#include "base/FileError.h"
#include "capture/AcceptedImages.h"
#include "store/ScreenshotRecord.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr QLatin1String kEntryPrefix(".importing-");

void removeTemporaries(const QString& folder)
{
    QDir directory(folder);
    for (const QString& name :
         directory.entryList({QStringLiteral(".*.tmp")}, QDir::Files | QDir::Hidden | QDir::System))
        directory.remove(name);
}

} // namespace

QString ImportJournal::entryPath(const QUuid& id) const
{
    return m_paths.root + QLatin1Char('/') + kEntryPrefix + identifierText(id);
}

void ImportJournal::begin(const QUuid& id) const
{
    const QString path = entryPath(id);
    const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
    ::close(file);
}

void ImportJournal::end(const QUuid& id) const
{
    QFile::remove(entryPath(id));
}

void ImportJournal::discard(const QUuid& id) const
{
    const QString name = QLatin1Char('/') + identifierText(id) + QLatin1Char('.');
    for (const QString& extension : acceptedImageExtensions())
        QFile::remove(m_paths.originals + name + extension);
    QFile::remove(m_paths.thumbnails + name + QStringLiteral("jpg"));
    QFile::remove(m_paths.appIcons + name + QStringLiteral("png"));
    end(id);
}

QString ImportJournal::linkTo(const QByteArray& target) const
{
    const QString path = m_paths.root + QStringLiteral("/.") +
                         QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp");
    if (::symlink(target.constData(), QFile::encodeName(path).constData()) != 0)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
    return path;
}

QList<QUuid> ImportJournal::interrupted() const
{
    QList<QUuid> ids;
    const QStringList names =
        QDir(m_paths.root).entryList({kEntryPrefix + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        const QUuid id = QUuid::fromString(name.mid(kEntryPrefix.size()));
        if (!id.isNull())
            ids.append(id);
    }
    return ids;
}

void ImportJournal::sweepRoot() const
{
    removeTemporaries(m_paths.root);
}

void ImportJournal::sweepItemFolders() const
{
    for (const QString& folder : {m_paths.originals, m_paths.thumbnails, m_paths.appIcons})
        removeTemporaries(folder);
}

} // namespace tessary
