#include "tests/session/TestPictures.h"

#include <QBuffer>
#include <QDataStream>

#include <array>

namespace tessary::testing {

namespace {

QByteArray encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format))
        qFatal("cannot write %s", format);
    return bytes;
}

} // namespace

QImage picture(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < width; ++x) {
            line[3 * x] = static_cast<uchar>(x * 255 / width);
            line[3 * x + 1] = static_cast<uchar>(y * 255 / height);
            line[3 * x + 2] = static_cast<uchar>(seed * 37 + x / 16 * 8);
        }
    }
    return image;
}

QByteArray pngOf(const QImage& image)
{
    return encoded(image, "PNG");
}

QByteArray bmpOf(const QImage& image)
{
    return encoded(image, "BMP");
}

QByteArray tiffOf(const QImage& image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
    const auto width = static_cast<quint32>(pixels.width());
    const auto height = static_cast<quint32>(pixels.height());
    constexpr quint16 kShort = 3;
    constexpr quint16 kLong = 4;
    struct Entry {
        quint16 tag;
        quint16 type;
        quint32 count;
        quint32 value;
    };
    constexpr quint32 kEntries = 10;
    constexpr quint32 kDepths = 8 + 2 + kEntries * 12 + 4; // where the three sample depths stand
    constexpr quint32 kPixels = kDepths + 6;
    const std::array<Entry, kEntries> entries{{{256, kLong, 1, width},
                                               {257, kLong, 1, height},
                                               {258, kShort, 3, kDepths},
                                               {259, kShort, 1, 1},
                                               {262, kShort, 1, 2},
                                               {273, kLong, 1, kPixels},
                                               {277, kShort, 1, 3},
                                               {278, kLong, 1, height},
                                               {279, kLong, 1, width * height * 3},
                                               {284, kShort, 1, 1}}};
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("II*\0", 4);
    stream << quint32{8} << static_cast<quint16>(kEntries);
    for (const Entry& entry : entries)
        stream << entry.tag << entry.type << entry.count << entry.value;
    stream << quint32{0} << quint16{8} << quint16{8} << quint16{8};
    for (int y = 0; y < pixels.height(); ++y)
        stream.writeRawData(reinterpret_cast<const char*>(pixels.constScanLine(y)), pixels.width() * 3);
    return bytes;
}

} // namespace tessary::testing
