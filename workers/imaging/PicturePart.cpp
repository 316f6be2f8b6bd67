#include "workers/imaging/PicturePart.h"

#include "workers/imaging/VipsOperation.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tessary::imaging {
namespace {

QSize sizeOf(VipsImage* image)
{
    return {vips_image_get_width(image), vips_image_get_height(image)};
}

/// @param orientation as EXIF counts. @param upright the size of the upright picture.
QRect stored(const QRect& part, int orientation, const QSize& upright)
{
    const int right = upright.width() - part.x() - part.width();
    const int bottom = upright.height() - part.y() - part.height();
    switch (orientation) {
    case 2:
        return {right, part.y(), part.width(), part.height()};
    case 3:
        return {right, bottom, part.width(), part.height()};
    case 4:
        return {part.x(), bottom, part.width(), part.height()};
    case 5:
        return {part.y(), part.x(), part.height(), part.width()};
    case 6:
        return {part.y(), right, part.height(), part.width()};
    case 7:
        return {bottom, right, part.height(), part.width()};
    case 8:
        return {bottom, part.x(), part.height(), part.width()};
    default:
        return part;
    }
}

/// The rows from `first` on, in memory. Asked for the last rows alone libvips would keep all above them.
Picture rowsFrom(VipsImage* image, int first)
{
    constexpr int kStrip = 32;
    Picture rows(vips_image_new_memory());
    if (vips_image_pipelinev(rows.get(), VIPS_DEMAND_STYLE_THINSTRIP, image, nullptr) != 0)
        throw vipsFailure();
    rows->Ysize = vips_image_get_height(image) - first;
    const GObjectPointer<VipsRegion> region(vips_region_new(image));
    const QSize size = sizeOf(image);
    for (int top = 0; top < size.height(); top += kStrip) {
        const VipsRect strip{0, top, size.width(), std::min(kStrip, size.height() - top)};
        if (vips_region_prepare(region.get(), &strip) != 0)
            throw vipsFailure();
        for (int row = std::max(top, first); row < top + strip.height; ++row)
            if (vips_image_write_line(rows.get(), row - first, VIPS_REGION_ADDR(region.get(), 0, row)) != 0)
                throw vipsFailure();
    }
    return rows;
}

/// Whole pixels averaged while they stream by, leaving between once and twice as many as wanted.
Picture shrunkPart(VipsImage* image, const QRect& area, const QSize& size)
{
    const int across = std::max(1, area.width() / size.width());
    const int down = std::max(1, area.height() / size.height());
    const int begin = area.y() % down;
    Picture picture = apply([&](VipsImage** out) {
        return vips_extract_area(image, out, area.x(), begin, area.width(), area.y() + area.height() - begin,
                                 nullptr);
    });
    if (vips_image_hasalpha(image) != FALSE)
        picture = apply([&](VipsImage** out) { return vips_premultiply(picture.get(), out, nullptr); });
    if (across > 1 || down > 1)
        picture = apply([&](VipsImage** out) {
            return vips_shrink(picture.get(), out, across, down, "ceil", TRUE, nullptr);
        });
    return rowsFrom(picture.get(), area.y() / down);
}

} // namespace

PicturePart PicturePart::asStored(VipsImage* image, const QRect& part, const QSize& size)
{
    constexpr int kFirstSideways = 5;
    const int orientation = vips_image_get_orientation(image);
    const bool isSideways = orientation >= kFirstSideways;
    const QSize upright = isSideways ? sizeOf(image).transposed() : sizeOf(image);
    if (!QRect(QPoint(), upright).contains(part))
        throw ImagingFailure(ImagingFailure::Case::BadRequest, QStringLiteral("part"));
    return {stored(part, orientation, upright), isSideways ? size.transposed() : size};
}

int PicturePart::loaderShrink(VipsImage* image) const
{
    const char* loader = nullptr;
    if (vips_image_get_typeof(image, VIPS_META_LOADER) == 0 ||
        vips_image_get_string(image, VIPS_META_LOADER, &loader) != 0 || std::strncmp(loader, "jpeg", 4) != 0)
        return 1;
    const qreal ratio = std::min(m_part.width() / m_size.width(), m_part.height() / m_size.height());
    constexpr int kMost = 8;
    int shrink = 1;
    while (shrink < kMost && shrink * 4 <= ratio)
        shrink *= 2;
    return shrink;
}

void PicturePart::follow(VipsImage* from, VipsImage* to)
{
    const qreal x = qreal(sizeOf(to).width()) / sizeOf(from).width();
    const qreal y = qreal(sizeOf(to).height()) / sizeOf(from).height();
    m_part = QRectF(m_part.x() * x, m_part.y() * y, m_part.width() * x, m_part.height() * y);
}

Picture PicturePart::upright(VipsImage* image) const
{
    const QRect area = m_part.toAlignedRect() & QRect(QPoint(), sizeOf(image));
    const VipsBandFormat format = vips_image_get_format(image);
    Picture picture = shrunkPart(image, area, m_size);
    const int across = std::max(1, area.width() / m_size.width());
    const int down = std::max(1, area.height() / m_size.height());
    if (area.size() != m_size)
        picture = apply([&](VipsImage** out) {
            return vips_resize(picture.get(), out, qreal(m_size.width()) * across / area.width(), "vscale",
                               qreal(m_size.height()) * down / area.height(), nullptr);
        });
    picture = apply([&](VipsImage** out) {
        return vips_embed(picture.get(), out, 0, 0, m_size.width(), m_size.height(), "extend",
                          VIPS_EXTEND_COPY, nullptr);
    });
    if (vips_image_hasalpha(picture.get()) != FALSE) {
        picture = apply([&](VipsImage** out) { return vips_unpremultiply(picture.get(), out, nullptr); });
        picture = apply([&](VipsImage** out) { return vips_cast(picture.get(), out, format, nullptr); });
    }
    return apply([&](VipsImage** out) { return vips_autorot(picture.get(), out, nullptr); });
}

} // namespace tessary::imaging
