#include "app/LibraryLock.h"

#include "base/FileError.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tessary {

QString LibraryError::localizedDescription() const
{
    return QCoreApplication::translate("LibraryError", "另一个 Tessary 正在使用资料库，请先将其退出。");
}

LibraryLock::LibraryLock(const QString& root)
{
    const QString path = root + QStringLiteral("/.lock");
    m_file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_file < 0)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
    if (::flock(m_file, LOCK_EX | LOCK_NB) == 0)
        return;
    if (errno == EWOULDBLOCK) {
        ::close(m_file);
        throw LibraryError(LibraryError::Case::InUse);
    }
    qWarning("The library's file system has no locks: nothing keeps other programs from it");
}

LibraryLock::~LibraryLock()
{
    ::close(m_file);
}

} // namespace tessary
