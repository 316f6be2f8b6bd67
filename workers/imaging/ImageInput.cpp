#include "workers/imaging/ImageInput.h"

#include "workers/imaging/FormatSignature.h"

#include <QFile>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary::imaging {
namespace {

constexpr qint64 kMostPixels = 1LL << 28;
constexpr qint64 kMostPixelsInMemory = 100'000'000;

bool needsAllOfItInMemory(VipsImage* image)
{
    const char* loader = nullptr;
    if (vips_image_get_typeof(image, VIPS_META_LOADER) != 0 &&
        vips_image_get_string(image, VIPS_META_LOADER, &loader) == 0 && std::strncmp(loader, "heif", 4) == 0)
        return true;
    return loader != nullptr && std::strncmp(loader, "png", 3) == 0 &&
           vips_image_get_typeof(image, "interlaced") != 0;
}

void checkSignature(QByteArrayView bytes, AllowedFormats formats)
{
    if (!beginsAsAllowed(bytes, formats))
        throw ImagingFailure(ImagingFailure::Case::NotAnImage, QStringLiteral("signature"));
}

void checkSize(VipsImage* image)
{
    const qint64 pixels = qint64{vips_image_get_width(image)} * vips_image_get_height(image);
    const qint64 most = needsAllOfItInMemory(image) ? kMostPixelsInMemory : kMostPixels;
    if (pixels > most)
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("%1 pixels").arg(pixels));
}

/// The transform comes last, over the few pixels that are left. (libvips' own option for thumbnails changes
/// pictures without a profile too, and makes white a little green.)
GObjectPointer<VipsImage> intoSrgb(GObjectPointer<VipsImage> image)
{
    if (vips_image_get_typeof(image.get(), VIPS_META_ICC_NAME) == 0)
        return image;
    VipsImage* transformed = nullptr;
    if (vips_icc_transform(image.get(), &transformed, "srgb", "embedded", TRUE, nullptr) == 0)
        return GObjectPointer<VipsImage>(transformed);
    // A damaged profile is no reason to show nothing.
    vips_error_clear();
    return image;
}

template <typename Operation>
GObjectPointer<VipsImage> applied(Operation operation)
{
    VipsImage* result = nullptr;
    if (operation(&result) != 0)
        throw vipsFailure();
    return GObjectPointer<VipsImage>(result);
}

// --- parts ------------------------------------------------------------------

/// A part of the picture as it is stored, which may be turned and mirrored.
struct StoredPart {
    QRectF part;
    QSize size; // that it is to have
};

/// @param orientation as EXIF counts. @param upright the size of the upright picture.
QRect asStored(const QRect& part, int orientation, const QSize& upright)
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

StoredPart storedPart(VipsImage* image, const QRect& part, const QSize& size)
{
    constexpr int kFirstSideways = 5;
    const int orientation = vips_image_get_orientation(image);
    const bool isSideways = orientation >= kFirstSideways;
    const QSize stored(vips_image_get_width(image), vips_image_get_height(image));
    const QSize upright = isSideways ? stored.transposed() : stored;
    if (!QRect(QPoint(), upright).contains(part))
        throw ImagingFailure(ImagingFailure::Case::BadRequest, QStringLiteral("part"));
    return {asStored(part, orientation, upright), isSideways ? size.transposed() : size};
}

bool isJpeg(VipsImage* image)
{
    const char* loader = nullptr;
    return vips_image_get_typeof(image, VIPS_META_LOADER) != 0 &&
           vips_image_get_string(image, VIPS_META_LOADER, &loader) == 0 &&
           std::strncmp(loader, "jpeg", 4) == 0;
}

/// By how much the JPEG loader itself may make the picture smaller, leaving it twice as fine as wanted.
int jpegShrink(const StoredPart& stored)
{
    const qreal ratio =
        std::min(stored.part.width() / stored.size.width(), stored.part.height() / stored.size.height());
    constexpr int kMost = 8;
    int shrink = 1;
    while (shrink < kMost && shrink * 4 <= ratio)
        shrink *= 2;
    return shrink;
}

/// @param place within the image, to fractions of a pixel.
GObjectPointer<VipsImage> scaledPart(VipsImage* image, const QRectF& place, const QSize& size)
{
    const QRect whole(0, 0, vips_image_get_width(image), vips_image_get_height(image));
    const QRect area = place.toAlignedRect() & whole;
    GObjectPointer<VipsImage> picture = applied([&](VipsImage** out) {
        return vips_extract_area(image, out, area.x(), area.y(), area.width(), area.height(), nullptr);
    });
    if (area.size() == size)
        return picture;
    const VipsBandFormat format = vips_image_get_format(picture.get());
    const bool hasAlpha = vips_image_hasalpha(picture.get()) != FALSE;
    if (hasAlpha)
        picture = applied([&](VipsImage** out) { return vips_premultiply(picture.get(), out, nullptr); });
    picture = applied([&](VipsImage** out) {
        return vips_resize(picture.get(), out, qreal(size.width()) / area.width(), "vscale",
                           qreal(size.height()) / area.height(), nullptr);
    });
    if (hasAlpha) {
        picture = applied([&](VipsImage** out) { return vips_unpremultiply(picture.get(), out, nullptr); });
        picture = applied([&](VipsImage** out) { return vips_cast(picture.get(), out, format, nullptr); });
    }
    return picture;
}

} // namespace

ImageInput ImageInput::fromFile(const QString& path)
{
    ImageInput input;
    // Not to be kept waiting by a named pipe.
    input.m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (input.m_descriptor < 0 || ::fstat(input.m_descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        throw ImagingFailure(ImagingFailure::Case::NotAnImage, QStringLiteral("no readable file"));
    std::array<char, kSignatureSize> start{};
    const ssize_t count = ::pread(input.m_descriptor, start.data(), start.size(), 0);
    checkSignature(QByteArrayView(start.data(), std::max<ssize_t>(count, 0)), AllowedFormats::Files);
    return input;
}

ImageInput ImageInput::fromBytes(QByteArray bytes)
{
    checkSignature(bytes, AllowedFormats::Bitmaps);
    ImageInput input;
    input.m_bytes = std::move(bytes);
    return input;
}

ImageInput::~ImageInput()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

ImageInput::ImageInput(ImageInput&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_bytes(std::move(other.m_bytes))
{
}

GObjectPointer<VipsSource> ImageInput::source() const
{
    VipsSource* made = nullptr;
    if (m_descriptor < 0) {
        made = vips_source_new_from_memory(m_bytes.constData(), static_cast<size_t>(m_bytes.size()));
    } else if (::lseek(m_descriptor, 0, SEEK_SET) == 0) {
        made = vips_source_new_from_descriptor(m_descriptor);
    }
    if (made == nullptr)
        throw vipsFailure();
    return GObjectPointer<VipsSource>(made);
}

GObjectPointer<VipsImage> ImageInput::image(VipsAccess access) const
{
    return open(access, "");
}

GObjectPointer<VipsImage> ImageInput::open(VipsAccess access, const char* loaderOptions) const
{
    const GObjectPointer<VipsSource> from = source();
    GObjectPointer<VipsImage> image(vips_image_new_from_source(from.get(), loaderOptions, "access", access,
                                                               "fail_on", VIPS_FAIL_ON_ERROR, nullptr));
    if (!image)
        throw vipsFailure();
    checkSize(image.get());
    return image;
}

ImageHeader ImageInput::header() const
{
    const GObjectPointer<VipsImage> opened = image(VIPS_ACCESS_SEQUENTIAL);
    return {QSize(vips_image_get_width(opened.get()), vips_image_get_height(opened.get())),
            vips_image_get_orientation(opened.get())};
}

GObjectPointer<VipsImage> ImageInput::thumbnail(int maximumPixelSize) const
{
    (void)header();
    const GObjectPointer<VipsSource> from = source();
    VipsImage* made = nullptr;
    // Its own argument "fail_on" has no effect on sources in 8.14.
    if (vips_thumbnail_source(from.get(), &made, maximumPixelSize, "height", maximumPixelSize, "size",
                              VIPS_SIZE_DOWN, "option_string", "[fail_on=error]", nullptr) != 0)
        throw vipsFailure();
    return intoSrgb(GObjectPointer<VipsImage>(made));
}

GObjectPointer<VipsImage> ImageInput::part(const QRect& part, const QSize& size) const
{
    GObjectPointer<VipsImage> whole = image(VIPS_ACCESS_SEQUENTIAL);
    const StoredPart stored = storedPart(whole.get(), part, size);
    QRectF place = stored.part;
    const int shrink = isJpeg(whole.get()) ? jpegShrink(stored) : 1;
    if (shrink > 1) {
        const QSizeF before(vips_image_get_width(whole.get()), vips_image_get_height(whole.get()));
        whole =
            open(VIPS_ACCESS_SEQUENTIAL, QStringLiteral("[shrink=%1]").arg(shrink).toLatin1().constData());
        const qreal x = vips_image_get_width(whole.get()) / before.width();
        const qreal y = vips_image_get_height(whole.get()) / before.height();
        place = QRectF(place.x() * x, place.y() * y, place.width() * x, place.height() * y);
    }
    GObjectPointer<VipsImage> picture = scaledPart(whole.get(), place, stored.size);
    picture = applied([&](VipsImage** out) { return vips_autorot(picture.get(), out, nullptr); });
    return intoSrgb(std::move(picture));
}

} // namespace tessary::imaging
