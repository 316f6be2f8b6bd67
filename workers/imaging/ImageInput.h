#pragma once

#include "workers/imaging/GObjectPointer.h"

#include <QByteArray>
#include <QRect>
#include <QSize>
#include <QString>

#include <vips/vips.h>

namespace tessary::imaging {

/// What a picture's header tells.
struct ImageHeader {
    QSize size;          ///< Pixels, before the orientation is applied.
    int orientation = 1; ///< 1 to 8 as EXIF counts them; 1 is upright.
};

/// One picture to read, from a regular file or from memory. Every way of reading it checks the header's
/// size first: 2^28 pixels at most, 10^8 for HEIF and interlaced PNG, which need all of it in memory.
/// Members throw ImagingFailure.
class ImageInput {
public:
    /// A regular file of one of AllowedFormats::Files.
    [[nodiscard]] static ImageInput fromFile(const QString& path);
    /// One of AllowedFormats::Bitmaps. Shares the bytes.
    [[nodiscard]] static ImageInput fromBytes(QByteArray bytes);
    ~ImageInput();
    ImageInput(ImageInput&& other) noexcept;
    ImageInput(const ImageInput&) = delete;
    ImageInput& operator=(const ImageInput&) = delete;

    [[nodiscard]] ImageHeader header() const;
    /// The whole picture, decoded as it is used. Truncated or damaged data is an error, then.
    [[nodiscard]] GObjectPointer<VipsImage> image(VipsAccess access) const;
    /// Upright, fitted into a square of that side, never enlarged, in sRGB where a profile was embedded.
    [[nodiscard]] GObjectPointer<VipsImage> thumbnail(int maximumPixelSize) const;
    /// A part of the upright picture, scaled to that size, in sRGB where a profile was embedded. Streams.
    [[nodiscard]] GObjectPointer<VipsImage> part(const QRect& part, const QSize& size) const;

private:
    ImageInput() = default;
    [[nodiscard]] GObjectPointer<VipsImage> open(VipsAccess access, const char* loaderOptions) const;
    /// From the start each time, since a descriptor has one position.
    [[nodiscard]] GObjectPointer<VipsSource> source() const;

    int m_descriptor = -1;
    QByteArray m_bytes;
};

} // namespace tessary::imaging
