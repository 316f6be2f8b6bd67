#include "workers/imaging/ImageInput.h"

#include "workers/imaging/FormatSignature.h"
#include "workers/imaging/PicturePart.h"

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
    PicturePart wanted = PicturePart::asStored(whole.get(), part, size);
    if (const int shrink = wanted.loaderShrink(whole.get()); shrink > 1) {
        const QByteArray options = "[shrink=" + QByteArray::number(shrink) + ']';
        const GObjectPointer<VipsImage> smaller = open(VIPS_ACCESS_SEQUENTIAL, options.constData());
        wanted.follow(whole.get(), smaller.get());
        return intoSrgb(wanted.upright(smaller.get()));
    }
    return intoSrgb(wanted.upright(whole.get()));
}

} // namespace tessary::imaging
