#include "platform/x11/PictureFile.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr qsizetype kDecidingBytes = 12;

QByteArray heifMimeType(QByteArrayView brand)
{
    constexpr std::array kHevcBrands{"heic", "heix", "hevc", "heim", "heis", "hevm", "hevs"};
    constexpr std::array kOtherBrands{"mif1", "msf1"};
    const auto isBrand = [brand](const char* name) { return brand == QByteArrayView(name); };
    if (std::any_of(kHevcBrands.begin(), kHevcBrands.end(), isBrand))
        return QByteArrayLiteral("image/heic");
    if (std::any_of(kOtherBrands.begin(), kOtherBrands.end(), isBrand))
        return QByteArrayLiteral("image/heif");
    return isBrand("avif") ? QByteArrayLiteral("image/avif") : QByteArray();
}

} // namespace

std::shared_ptr<const PictureFile> PictureFile::open(const QString& path)
{
    // Without waiting for the other end, should somebody have put a pipe there.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    const std::shared_ptr<PictureFile> file(new PictureFile(descriptor, 0));
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    file->m_size = status.st_size;
    file->m_mimeType = pictureMimeType(file->read(0, std::min<qint64>(status.st_size, kDecidingBytes)));
    return file->m_mimeType.isEmpty() ? nullptr : file;
}

PictureFile::~PictureFile()
{
    ::close(m_descriptor);
}

QByteArray PictureFile::read(qint64 offset, qint64 length) const
{
    QByteArray bytes(length, Qt::Uninitialized);
    qint64 done = 0;
    while (done < length) {
        const ssize_t got =
            ::pread(m_descriptor, bytes.data() + done, static_cast<size_t>(length - done), offset + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return {};
        done += got;
    }
    return bytes;
}

QByteArray pictureMimeType(QByteArrayView beginning)
{
    if (beginning.startsWith("\x89PNG\r\n\x1a\n"))
        return QByteArrayLiteral("image/png");
    if (beginning.startsWith("\xff\xd8\xff"))
        return QByteArrayLiteral("image/jpeg");
    for (const QByteArrayView tiff : {QByteArrayView("II*\0", 4), QByteArrayView("MM\0*", 4),
                                      QByteArrayView("II+\0", 4), QByteArrayView("MM\0+", 4)}) {
        if (beginning.startsWith(tiff))
            return QByteArrayLiteral("image/tiff");
    }
    if (beginning.size() >= kDecidingBytes && beginning.sliced(4, 4) == "ftyp")
        return heifMimeType(beginning.sliced(8, 4));
    return {};
}

} // namespace tessary
