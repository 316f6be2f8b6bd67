#include "workers/imaging/BitmapReader.h"

#include "workers/imaging/VipsLibrary.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

#include <cstdlib>

namespace tessary::imaging {
namespace {

constexpr qint64 kMostPixels = 1LL << 28;
constexpr int kMostMegabytes = 1200;

/// Looked up by ourselves, since Qt does not tell a large picture from a damaged one.
qint64 promisedPixels(const QByteArray& bytes)
{
    constexpr qsizetype kHeaderSizeAt = 14;
    constexpr qsizetype kWidthAt = 18;
    constexpr qsizetype kHeightAt = 22;
    constexpr quint32 kOldHeaderSize = 12; // with 16-bit sides, which are never too large
    if (bytes.size() < kHeightAt + qsizetype{sizeof(qint32)} ||
        qFromLittleEndian<quint32>(bytes.constData() + kHeaderSizeAt) <= kOldHeaderSize)
        return 0;
    return std::abs(qint64{qFromLittleEndian<qint32>(bytes.constData() + kWidthAt)}) *
           std::abs(qint64{qFromLittleEndian<qint32>(bytes.constData() + kHeightAt)});
}

QImage decode(const QByteArray& bytes)
{
    if (promisedPixels(bytes) > kMostPixels)
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap size"));
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(kMostMegabytes);
    QImage image = QImageReader(&buffer, QByteArrayLiteral("bmp")).read();
    if (image.isNull())
        throw ImagingFailure(ImagingFailure::Case::NotAnImage, QStringLiteral("bitmap data"));
    return image;
}

/// Rows without padding, as libvips wants them.
GObjectPointer<VipsImage> copyToVips(const QImage& image, int bands)
{
    VipsImage* whole = vips_image_new_from_memory(image.constBits(), static_cast<size_t>(image.sizeInBytes()),
                                                  image.width(), image.height(), 4, VIPS_FORMAT_UCHAR);
    if (whole == nullptr)
        throw vipsFailure();
    const GObjectPointer<VipsImage> holder(whole);
    whole->Type = VIPS_INTERPRETATION_sRGB;
    VipsImage* part = nullptr;
    if (vips_extract_band(whole, &part, 0, "n", bands, nullptr) != 0)
        throw vipsFailure();
    const GObjectPointer<VipsImage> pipeline(part);
    VipsImage* copy = vips_image_copy_memory(part);
    if (copy == nullptr)
        throw vipsFailure();
    return GObjectPointer<VipsImage>(copy);
}

} // namespace

bool isWindowsBitmap(const QByteArray& bytes)
{
    return bytes.startsWith("BM");
}

GObjectPointer<VipsImage> readWindowsBitmap(const QByteArray& bytes)
{
    QImage image = decode(bytes);
    const bool transparent = image.hasAlphaChannel();
    image.convertTo(QImage::Format_RGBA8888);
    if (image.isNull())
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap memory"));
    return copyToVips(image, transparent ? 4 : 3);
}

} // namespace tessary::imaging
