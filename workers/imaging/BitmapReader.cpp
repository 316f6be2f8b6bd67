#include "workers/imaging/BitmapReader.h"

#include "workers/imaging/ImagingFailure.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

#include <cstdlib>

namespace tessary::imaging {
namespace {

constexpr qint64 kMostPixels = 1LL << 28;
constexpr int kMostMegabytes = 1200;

/// Looked up by ourselves, since Qt does not tell a large picture from a damaged one.
QSize promisedSize(const QByteArray& bytes)
{
    constexpr qsizetype kHeaderSizeAt = 14;
    constexpr qsizetype kWidthAt = 18;
    constexpr qsizetype kHeightAt = 22;
    constexpr quint32 kOldHeaderSize = 12; // with 16-bit sides, which are never too large
    constexpr qint32 kMostNegative = std::numeric_limits<qint32>::min();
    if (bytes.size() < kHeightAt + qsizetype{sizeof(qint32)} ||
        qFromLittleEndian<quint32>(bytes.constData() + kHeaderSizeAt) <= kOldHeaderSize)
        return {};
    const auto width = qFromLittleEndian<qint32>(bytes.constData() + kWidthAt);
    // Negative where the first row is the top one.
    const auto height = qFromLittleEndian<qint32>(bytes.constData() + kHeightAt);
    return {width, height == kMostNegative ? 0 : std::abs(height)};
}

void checkSize(QSize size)
{
    if (!size.isValid())
        return;
    // Qt reports a lack of memory as damage, so it is looked for here.
    if (qint64{size.width()} * size.height() > kMostPixels || QImage(size, QImage::Format_RGB32).isNull())
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap size"));
}

/// The bytes are given back before the picture is worked on.
QImage decode(QByteArray bytes)
{
    checkSize(promisedSize(bytes));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(kMostMegabytes);
    QImage image = QImageReader(&buffer, QByteArrayLiteral("bmp")).read();
    if (image.isNull())
        throw ImagingFailure(ImagingFailure::Case::NotAnImage, QStringLiteral("bitmap data"));
    return image;
}

} // namespace

bool isWindowsBitmap(const QByteArray& bytes)
{
    return bytes.startsWith("BM");
}

QImage readWindowsBitmap(QByteArray bytes)
{
    QImage image = decode(std::move(bytes));
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
    if (image.isNull())
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("bitmap memory"));
    return image;
}

} // namespace tessary::imaging
