#include "base/RegularFile.h"

#include "base/FileError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace tessary {

FileDescriptor openRegularFile(const QString& path)
{
    // Without O_NONBLOCK the opening of a pipe would wait for somebody who writes.
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0)
        throw FileError::fromErrno(errno, path, FileError::Operation::Read);
    struct stat found {};
    if (::fstat(file.get(), &found) != 0 || !S_ISREG(found.st_mode))
        throw FileError(FileError::Case::ReadUnknown, path);
    return file;
}

} // namespace tessary
