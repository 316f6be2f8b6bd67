#include "app/commandline/HandedInFile.h"

#include "app/commandline/ExitStatus.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tessary {
namespace {

CommandError systemError(const QString& what)
{
    return {ExitStatus::Failed, what + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(errno))};
}

/// Hands the whole file out in pieces. @param take returns false to stop.
template <typename Take>
void readAll(int descriptor, const Take& take)
{
    QByteArray buffer(256 * 1024, Qt::Uninitialized);
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), static_cast<size_t>(buffer.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw systemError(QStringLiteral("the content cannot be read"));
        if (count == 0 || !take(QByteArrayView(buffer.constData(), count)))
            return;
    }
}

} // namespace

HandedInFile::HandedInFile(const QDBusUnixFileDescriptor& descriptor) : m_descriptor(descriptor)
{
    if (!m_descriptor.isValid())
        throw CommandError(ExitStatus::Failed, QStringLiteral("Tessary sent no content"));
}

QByteArray HandedInFile::bytes() const
{
    QByteArray all;
    readAll(m_descriptor.fileDescriptor(), [&](QByteArrayView piece) {
        all.append(piece);
        return true;
    });
    return all;
}

void HandedInFile::copyTo(int descriptor) const
{
    readAll(m_descriptor.fileDescriptor(), [&](QByteArrayView piece) {
        while (!piece.isEmpty()) {
            const ssize_t written = ::write(descriptor, piece.data(), static_cast<size_t>(piece.size()));
            if (written < 0 && errno != EINTR)
                throw systemError(QStringLiteral("the content cannot be written"));
            piece = piece.sliced(written < 0 ? 0 : written);
        }
        return true;
    });
}

void HandedInFile::saveTo(const QByteArray& path) const
{
    QSaveFile file(QFile::decodeName(path));
    file.setDirectWriteFallback(true); // into a device or a pipe
    bool isWritten = file.open(QIODevice::WriteOnly);
    if (isWritten)
        readAll(m_descriptor.fileDescriptor(), [&](QByteArrayView piece) {
            isWritten = file.write(piece.data(), piece.size()) == piece.size();
            return isWritten;
        });
    if (!isWritten || !file.commit())
        throw CommandError(ExitStatus::Failed,
                           QString::fromUtf8(path) + QStringLiteral(": ") + file.errorString());
}

} // namespace tessary
