#pragma once

#include "workers/imaging/GObjectPointer.h"

#include <QRect>
#include <QRectF>
#include <QSize>

#include <vips/vips.h>

namespace tessary::imaging {

/// A part of a picture as it is stored, perhaps turned and mirrored, and the size that it is to have. All
/// throw ImagingFailure.
class PicturePart {
public:
    /// @param part of the upright picture. @param size neither side larger than the part's.
    [[nodiscard]] static PicturePart asStored(VipsImage* image, const QRect& part, const QSize& size);

    /// By how much the loader itself may make the picture smaller, leaving it twice as fine as wanted; 1
    /// where it cannot.
    [[nodiscard]] int loaderShrink(VipsImage* image) const;
    /// The part of the same picture in another size.
    void follow(VipsImage* from, VipsImage* to);
    /// The part, upright and scaled. Reads the image once from its top, a few rows at a time, so it may be
    /// open for sequential access.
    [[nodiscard]] GObjectPointer<VipsImage> upright(VipsImage* image) const;

private:
    PicturePart(const QRectF& part, const QSize& size) : m_part(part), m_size(size) {}

    QRectF m_part; // pixels
    QSize m_size;
};

} // namespace tessary::imaging
