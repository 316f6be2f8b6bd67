#include "workers/imaging/BitmapReader.h"

#include "workers/imaging/VipsLibrary.h"

#include <QBuffer>
#include <QImageReader>

namespace tessary::imaging {
namespace {

constexpr qint64 kMostPixels = 1LL << 28;
constexpr int kMostMegabytes = 1200;

QImage decode(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        throw ImagingFailure(ImagingFailure::Case::NotAnImage);
    QImageReader::setAllocationLimit(kMostMegabytes);
    QImageReader reader(&buffer, QByteArrayLiteral("bmp"));
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        throw ImagingFailure(ImagingFailure::Case::NotAnImage, QStringLiteral("bitmap header"));
    if (qint64{size.width()} * size.height() > kMostPixels)
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap size"));
    QImage image = reader.read();
    if (image.isNull() && buffer.pos() < buffer.size() && reader.error() == QImageReader::InvalidDataError &&
        qint64{size.width()} * size.height() * 4 > qint64{kMostMegabytes} * 1024 * 1024)
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap memory"));
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
