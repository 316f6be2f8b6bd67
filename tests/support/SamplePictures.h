#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QList>

namespace tessary::testing {

/// Pictures for tests, made on the spot. Each is red at the top left, green at the top right, blue at the
/// bottom left and white at the bottom right, so that turning and mirroring show.
[[nodiscard]] QImage quadrants(int width, int height);

enum class Quadrant { Red, Green, Blue, White };
/// The sample's colour that is nearest to the picture's in the middle of its quarters.
struct Corners {
    Quadrant topLeft;
    Quadrant topRight;
    Quadrant bottomLeft;
    Quadrant bottomRight;
    friend bool operator==(const Corners&, const Corners&) = default;
};
[[nodiscard]] Corners cornersOf(const QImage& image);
/// How a picture stored with that EXIF orientation (1 to 8) looks when it is upright.
[[nodiscard]] Corners uprightCorners(int orientation);

[[nodiscard]] QByteArray encoded(const QImage& image, const char* format, int quality = -1);
[[nodiscard]] QByteArray progressiveJpeg(const QImage& image);

/// A chunk of a PNG file with its length and checksum.
[[nodiscard]] QByteArray pngChunk(const char* type, const QByteArray& data);
/// Only a header with these values and hardly any data.
[[nodiscard]] QByteArray pngHeaderOnly(quint32 width, quint32 height, int bitDepth, int colourType,
                                       bool interlaced);

/// The orientation put into the file as the format has it.
[[nodiscard]] QByteArray jpegWithOrientation(const QImage& image, int orientation);
[[nodiscard]] QByteArray pngWithOrientation(const QByteArray& png, int orientation);
[[nodiscard]] QByteArray tiffWithOrientation(const QImage& image, int orientation);

struct TiffTag {
    quint16 tag;
    quint16 type; ///< 3 is 16 bits, 4 is 32.
    quint32 count;
    quint32 value; ///< The value, or where it is.
};
/// A little-endian TIFF of these tags, whose pixels begin at offset 8.
[[nodiscard]] QByteArray tiffOf(const QList<TiffTag>& tags, const QByteArray& pixels);
/// The tags of an ordinary uncompressed picture of 8 bits a sample.
[[nodiscard]] QList<TiffTag> tiffTags(quint32 width, quint32 height, quint16 photometric, quint16 samples);
[[nodiscard]] QByteArray cmykTiff(int width, int height);

/// Replaces the two sides in a JPEG's frame header.
[[nodiscard]] QByteArray jpegWithSides(QByteArray jpeg, quint16 width, quint16 height);

} // namespace tessary::testing
