#include "tests/support/SamplePictures.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>

#include <array>

namespace tessary::testing {
namespace {

const std::array<QColor, 4> kColours{QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue), QColor(Qt::white)};

Quadrant nearestColour(const QColor& colour)
{
    const auto distance = [&](const QColor& other) {
        return std::abs(colour.red() - other.red()) + std::abs(colour.green() - other.green()) +
               std::abs(colour.blue() - other.blue());
    };
    size_t best = 0;
    for (size_t i = 1; i < kColours.size(); ++i)
        best = distance(kColours[i]) < distance(kColours[best]) ? i : best;
    return static_cast<Quadrant>(best);
}

template <typename Number>
QByteArray bigEndian(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

quint32 crc32(const QByteArray& bytes)
{
    quint32 crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320 : 0);
    }
    return ~crc;
}

/// An EXIF block that holds the orientation and nothing else.
QByteArray exif(int orientation)
{
    return QByteArray::fromHex("4d4d002a00000008" // big endian, first directory at 8
                               "0001011200030000"
                               "0001") +
           bigEndian(quint16(orientation)) + QByteArray(6, '\0');
}

} // namespace

QImage quadrants(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    const int w = width / 2;
    const int h = height / 2;
    painter.fillRect(0, 0, w, h, kColours[0]);
    painter.fillRect(w, 0, width - w, h, kColours[1]);
    painter.fillRect(0, h, w, height - h, kColours[2]);
    painter.fillRect(w, h, width - w, height - h, kColours[3]);
    return image;
}

Corners cornersOf(const QImage& image)
{
    const int left = image.width() / 4;
    const int right = image.width() - 1 - left;
    const int top = image.height() / 4;
    const int bottom = image.height() - 1 - top;
    return {nearestColour(image.pixelColor(left, top)), nearestColour(image.pixelColor(right, top)),
            nearestColour(image.pixelColor(left, bottom)), nearestColour(image.pixelColor(right, bottom))};
}

Corners uprightCorners(int orientation)
{
    using enum Quadrant;
    switch (orientation) {
    case 2:
        return {Green, Red, White, Blue};
    case 3:
        return {White, Blue, Green, Red};
    case 4:
        return {Blue, White, Red, Green};
    case 5:
        return {Red, Blue, Green, White};
    case 6:
        return {Blue, Red, White, Green};
    case 7:
        return {White, Green, Blue, Red};
    case 8:
        return {Green, White, Red, Blue};
    default:
        return {Red, Green, Blue, White};
    }
}

QByteArray encoded(const QImage& image, const char* format, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, quality);
    return bytes;
}

QByteArray progressiveJpeg(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.write(image);
    return bytes;
}

QByteArray pngChunk(const char* type, const QByteArray& data)
{
    const QByteArray body = QByteArray(type) + data;
    return bigEndian(quint32(data.size())) + body + bigEndian(crc32(body));
}

QByteArray pngHeaderOnly(quint32 width, quint32 height, int bitDepth, int colourType, bool interlaced)
{
    const QByteArray header = bigEndian(width) + bigEndian(height) + char(bitDepth) + char(colourType) +
                              '\0' + '\0' + char(interlaced ? 1 : 0);
    return QByteArray::fromHex("89504e470d0a1a0a") + pngChunk("IHDR", header) +
           pngChunk("IDAT", qCompress(QByteArray(64, '\0')).mid(4)) + pngChunk("IEND", {});
}

QByteArray jpegWithOrientation(const QImage& image, int orientation)
{
    constexpr int kBestQuality = 95;
    const QByteArray jpeg = encoded(image, "jpeg", kBestQuality);
    const QByteArray block = QByteArray("Exif\0\0", 6) + exif(orientation);
    return jpeg.left(2) + QByteArray::fromHex("ffe1") + bigEndian(quint16(block.size() + 2)) + block +
           jpeg.mid(2);
}

QByteArray pngWithOrientation(const QByteArray& png, int orientation)
{
    constexpr int kEndOfHeader = 8 + 25;
    return png.left(kEndOfHeader) + pngChunk("eXIf", exif(orientation)) + png.mid(kEndOfHeader);
}

QList<TiffTag> tiffTags(quint32 width, quint32 height, quint16 photometric, quint16 samples)
{
    constexpr quint32 kPixelsAt = 8;
    // Four 16-bit numbers do not fit into a tag, so all samples' depth is given once.
    return {{256, 4, 1, width},   {257, 4, 1, height},      {258, 3, 1, 8},
            {259, 3, 1, 1},       {262, 3, 1, photometric}, {273, 4, 1, kPixelsAt},
            {277, 3, 1, samples}, {278, 4, 1, height},      {279, 4, 1, width * height * samples}};
}

QByteArray tiffOf(const QList<TiffTag>& tags, const QByteArray& pixels)
{
    QByteArray bytes = QByteArray("II*\0", 4) + littleEndian(quint32(8 + pixels.size())) + pixels;
    bytes += littleEndian(quint16(tags.size()));
    for (const TiffTag& tag : tags)
        bytes += littleEndian(tag.tag) + littleEndian(tag.type) + littleEndian(tag.count) +
                 littleEndian(tag.value);
    return bytes + littleEndian(quint32(0));
}

QByteArray tiffWithOrientation(const QImage& image, int orientation)
{
    QByteArray pixels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            pixels.append(char(qRed(pixel))).append(char(qGreen(pixel))).append(char(qBlue(pixel)));
        }
    }
    constexpr quint16 kRgb = 2;
    QList<TiffTag> tags = tiffTags(quint32(image.width()), quint32(image.height()), kRgb, 3);
    tags.insert(6, TiffTag{274, 3, 1, quint32(orientation)});
    return tiffOf(tags, pixels);
}

QByteArray cmykTiff(int width, int height)
{
    QByteArray pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool left = x < width / 2;
            const bool top = y < height / 2;
            // Magenta and yellow make red, cyan and yellow green, cyan and magenta blue, no ink white.
            const char* const ink =
                top ? (left ? "\0\xff\xff" : "\xff\0\xff") : (left ? "\xff\xff\0" : "\0\0\0");
            pixels.append(ink, 3).append('\0');
        }
    }
    constexpr quint16 kSeparated = 5;
    return tiffOf(tiffTags(quint32(width), quint32(height), kSeparated, 4), pixels);
}

QByteArray jpegWithSides(QByteArray jpeg, quint16 width, quint16 height)
{
    for (qsizetype at = 2; at + 9 < jpeg.size();) {
        const auto marker = static_cast<quint8>(jpeg.at(at + 1));
        if (marker >= 0xc0 && marker <= 0xc2)
            return jpeg.replace(at + 5, 4, bigEndian(height) + bigEndian(width));
        at += 2 + qFromBigEndian<quint16>(jpeg.constData() + at + 2);
    }
    return {};
}

} // namespace tessary::testing
