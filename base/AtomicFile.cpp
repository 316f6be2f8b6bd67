#include "base/AtomicFile.h"

#include "base/RegularFile.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

/// A new file beside the destination that takes its name on `commit`, and is gone otherwise.
class TemporarySibling {
public:
    explicit TemporarySibling(const QString& destination)
        : m_destination(destination),
          m_path(temporaryPath(destination)),
          m_file(::open(QFile::encodeName(m_path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600))
    {
        if (m_file.get() < 0)
            throw writeError();
    }
    ~TemporarySibling()
    {
        if (!m_committed)
            ::unlink(QFile::encodeName(m_path).constData());
    }
    TemporarySibling(const TemporarySibling&) = delete;
    TemporarySibling& operator=(const TemporarySibling&) = delete;

    [[nodiscard]] int descriptor() const { return m_file.get(); }

    void write(const char* data, qint64 size)
    {
        while (size > 0) {
            const ssize_t written = ::write(m_file.get(), data, static_cast<size_t>(size));
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                throw writeError();
            data += written;
            size -= written;
        }
    }

    void commit(Durability durability)
    {
        if (durability == Durability::PowerCut && ::fsync(m_file.get()) != 0)
            throw writeError();
        if (!m_file.close() || ::rename(QFile::encodeName(m_path).constData(),
                                        QFile::encodeName(m_destination).constData()) != 0)
            throw writeError();
        m_committed = true;
        if (durability == Durability::PowerCut)
            syncFolder();
    }

private:
    static QString temporaryPath(const QString& destination)
    {
        return QFileInfo(destination).path() + QStringLiteral("/.") +
               QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp");
    }
    [[nodiscard]] FileError writeError() const
    {
        return FileError::fromErrno(errno, m_destination, FileError::Operation::Write);
    }
    void syncFolder() const
    {
        const FileDescriptor folder(::open(QFile::encodeName(QFileInfo(m_destination).path()).constData(),
                                           O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.get() >= 0)
            ::fsync(folder.get());
    }

    QString m_destination;
    QString m_path;
    FileDescriptor m_file;
    bool m_committed = false;
};

constexpr size_t kCopyBufferSize = 256 * 1024;

void copyContents(int source, const QString& sourcePath, TemporarySibling& destination)
{
    if (::ioctl(destination.descriptor(), FICLONE, source) == 0)
        return;
    std::vector<char> buffer(kCopyBufferSize);
    for (;;) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw FileError::fromErrno(errno, sourcePath, FileError::Operation::Read);
        if (count == 0)
            return;
        destination.write(buffer.data(), count);
    }
}

} // namespace

void writeFileAtomically(const QString& path, const QByteArray& bytes, Durability durability)
{
    TemporarySibling file(path);
    file.write(bytes.constData(), bytes.size());
    file.commit(durability);
}

void copyFileAtomically(const QString& source, const QString& destination, Durability durability)
{
    const FileDescriptor in = openRegularFile(source);
    TemporarySibling file(destination);
    copyContents(in.get(), source, file);
    file.commit(durability);
}

void removeFile(const QString& path)
{
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
}

} // namespace tessary
