#include <vips/vips.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Writes the pictures that Qt cannot: `sample_maker FROM.png KIND TO`.
int make(VipsImage* image, const char* kind, const char* path)
{
    if (std::strcmp(kind, "heic") == 0)
        return vips_heifsave(image, path, "compression", VIPS_FOREIGN_HEIF_COMPRESSION_HEVC, nullptr);
    if (std::strcmp(kind, "webp") == 0)
        return vips_webpsave(image, path, "lossless", TRUE, nullptr);
    if (std::strcmp(kind, "animated-webp") == 0) {
        // Two pages one above the other: the picture's upper and lower half.
        vips_image_set_int(image, VIPS_META_PAGE_HEIGHT, vips_image_get_height(image) / 2);
        return vips_webpsave(image, path, "lossless", TRUE, nullptr);
    }
    if (std::strcmp(kind, "cmyk-jpeg") == 0) {
        VipsImage* cmyk = nullptr;
        if (vips_colourspace(image, &cmyk, VIPS_INTERPRETATION_CMYK, nullptr) != 0)
            return -1;
        const int result = vips_jpegsave(cmyk, path, "Q", 95, nullptr);
        g_object_unref(cmyk);
        return result;
    }
    return -1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || vips_init(argv[0]) != 0)
        return 2;
    VipsImage* const read = vips_image_new_from_file(argv[1], nullptr);
    VipsImage* image = nullptr;
    if (read == nullptr || vips_copy(read, &image, nullptr) != 0)
        return 3;
    const int result = make(image, argv[2], argv[3]);
    if (result != 0)
        std::fputs(vips_error_buffer(), stderr);
    g_object_unref(image);
    g_object_unref(read);
    // At once: the encoder of HEIC leaks a little, which a sanitizer would hold against us.
    std::_Exit(result == 0 ? 0 : 4);
}
