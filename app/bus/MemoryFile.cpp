#include "app/bus/MemoryFile.h"

#include "base/FileError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tessary {
namespace {

FileError memoryError()
{
    return FileError::fromErrno(errno, QStringLiteral("memfd"), FileError::Operation::Write);
}

} // namespace

MemoryFile::MemoryFile() : m_descriptor(::memfd_create("tessary", MFD_CLOEXEC | MFD_ALLOW_SEALING))
{
    if (m_descriptor < 0)
        throw memoryError();
}

MemoryFile::~MemoryFile()
{
    ::close(m_descriptor);
}

void MemoryFile::append(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw memoryError();
        bytes = bytes.sliced(written);
        m_size += written;
    }
}

QDBusUnixFileDescriptor MemoryFile::handOut()
{
    if (::lseek(m_descriptor, 0, SEEK_SET) != 0 ||
        ::fcntl(m_descriptor, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL) != 0)
        throw memoryError();
    return QDBusUnixFileDescriptor(m_descriptor); // a duplicate
}

} // namespace tessary
