#include "workers/imaging/PictureConversion.h"

#include "workers/imaging/VipsOperation.h"

namespace tessary::imaging {
namespace {

/// Three bands of 8 bits, or four where there is transparency.
Picture toSrgb8(VipsImage* image)
{
    Picture picture = apply(
        [&](VipsImage** out) { return vips_colourspace(image, out, VIPS_INTERPRETATION_sRGB, nullptr); });
    picture = apply([&](VipsImage** out) { return vips_cast_uchar(picture.get(), out, nullptr); });
    constexpr int kMostBands = 4;
    if (vips_image_get_bands(picture.get()) <= kMostBands)
        return picture;
    return apply(
        [&](VipsImage** out) { return vips_extract_band(picture.get(), out, 0, "n", kMostBands, nullptr); });
}

Picture onWhite(Picture picture)
{
    if (vips_image_hasalpha(picture.get()) == FALSE)
        return picture;
    const double white[] = {255.0, 255.0, 255.0};
    const std::unique_ptr<VipsArrayDouble, void (*)(VipsArrayDouble*)> background(
        vips_array_double_new(white, 3), [](VipsArrayDouble* array) { vips_area_unref(VIPS_AREA(array)); });
    return apply([&](VipsImage** out) {
        return vips_flatten(picture.get(), out, "background", background.get(), nullptr);
    });
}

/// Only what PNG can hold: grey or RGB, of 8 or 16 bits.
Picture toPngColours(VipsImage* image)
{
    const VipsInterpretation colours = vips_image_guess_interpretation(image);
    if (colours == VIPS_INTERPRETATION_CMYK) {
        const Picture rgb = apply([&](VipsImage** out) {
            return vips_icc_transform(image, out, "srgb", "embedded", TRUE, "input_profile", "cmyk", nullptr);
        });
        return toSrgb8(rgb.get());
    }
    const VipsBandFormat format = vips_image_get_format(image);
    const bool eightBit = format == VIPS_FORMAT_UCHAR &&
                          (colours == VIPS_INTERPRETATION_B_W || colours == VIPS_INTERPRETATION_sRGB);
    const bool sixteenBit = format == VIPS_FORMAT_USHORT &&
                            (colours == VIPS_INTERPRETATION_GREY16 || colours == VIPS_INTERPRETATION_RGB16);
    if (eightBit || sixteenBit)
        return apply(
            [&](VipsImage** out) { return vips_copy(image, out, "interpretation", colours, nullptr); });
    return toSrgb8(image);
}

QByteArray takeBuffer(void* memory, size_t size)
{
    const GMemory<char> holder(static_cast<char*>(memory));
    return QByteArray(holder.get(), static_cast<qsizetype>(size));
}

} // namespace

QByteArray toJpeg(VipsImage* image, int quality)
{
    const Picture picture = onWhite(toSrgb8(image));
    void* memory = nullptr;
    size_t size = 0;
    if (vips_jpegsave_buffer(picture.get(), &memory, &size, "Q", quality, "strip", TRUE, "optimize_coding",
                             TRUE, nullptr) != 0)
        throw vipsFailure();
    return takeBuffer(memory, size);
}

QImage toQImage(VipsImage* image)
{
    Picture picture = toSrgb8(image);
    const bool opaque = vips_image_hasalpha(picture.get()) == FALSE;
    if (opaque)
        picture = apply([&](VipsImage** out) { return vips_addalpha(picture.get(), out, nullptr); });
    picture = apply([&](VipsImage** out) { return vips_cast_uchar(picture.get(), out, nullptr); });
    const int width = vips_image_get_width(picture.get());
    const int height = vips_image_get_height(picture.get());
    size_t size = 0;
    const GMemory<uchar> pixels(static_cast<uchar*>(vips_image_write_to_memory(picture.get(), &size)));
    if (!pixels)
        throw vipsFailure();
    const QImage rgba(pixels.get(), width, height, width * 4, QImage::Format_RGBA8888);
    QImage result = rgba.convertToFormat(opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (result.isNull())
        throw ImagingFailure(ImagingFailure::Case::TooLarge, QStringLiteral("no memory for the pixels"));
    return result;
}

QByteArray toPng(VipsImage* image)
{
    Picture picture = apply([&](VipsImage** out) { return vips_autorot(image, out, nullptr); });
    picture = toPngColours(picture.get());
    // A picture of our own, so that its fields may be changed.
    picture = apply([&](VipsImage** out) { return vips_copy(picture.get(), out, nullptr); });
    for (const char* field : {VIPS_META_EXIF_NAME, VIPS_META_XMP_NAME, VIPS_META_IPTC_NAME,
                              VIPS_META_PHOTOSHOP_NAME, VIPS_META_IMAGEDESCRIPTION, VIPS_META_ORIENTATION})
        vips_image_remove(picture.get(), field);
    void* memory = nullptr;
    size_t size = 0;
    constexpr int kCompression = 3;
    if (vips_pngsave_buffer(picture.get(), &memory, &size, "compression", kCompression, nullptr) != 0)
        throw vipsFailure();
    return takeBuffer(memory, size);
}

QByteArray toPng(const QImage& image)
{
    constexpr int kBands = 4;
    constexpr int kColours = 3;
    // Borrows the pixels: such rows have no padding.
    const Picture whole(vips_image_new_from_memory(image.constBits(),
                                                   static_cast<size_t>(image.sizeInBytes()), image.width(),
                                                   image.height(), kBands, VIPS_FORMAT_UCHAR));
    if (!whole)
        throw vipsFailure();
    const int bands = image.hasAlphaChannel() ? kBands : kColours;
    Picture picture =
        apply([&](VipsImage** out) { return vips_extract_band(whole.get(), out, 0, "n", bands, nullptr); });
    picture = apply([&](VipsImage** out) {
        return vips_copy(picture.get(), out, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr);
    });
    return toPng(picture.get());
}

} // namespace tessary::imaging
