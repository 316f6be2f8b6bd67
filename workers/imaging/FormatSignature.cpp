#include "workers/imaging/FormatSignature.h"

#include <array>

namespace tessary::imaging {
namespace {

bool isHeif(QByteArrayView bytes)
{
    constexpr std::array kBrands{"heic", "heix", "hevc", "heim", "heis",
                                 "hevm", "hevs", "mif1", "msf1", "avif"};
    return bytes.size() >= kSignatureSize && bytes.sliced(4, 4) == "ftyp" &&
           std::any_of(kBrands.begin(), kBrands.end(),
                       [&](const char* brand) { return bytes.sliced(8, 4) == QByteArrayView(brand); });
}

bool isWebp(QByteArrayView bytes)
{
    return bytes.size() >= kSignatureSize && bytes.startsWith("RIFF") && bytes.sliced(8, 4) == "WEBP";
}

bool isTiff(QByteArrayView bytes)
{
    // With 32-bit offsets, and with 64-bit ones.
    return bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4)) ||
           bytes.startsWith(QByteArrayView("II+\0", 4)) || bytes.startsWith(QByteArrayView("MM\0+", 4));
}

} // namespace

bool beginsAsAllowed(QByteArrayView bytes, AllowedFormats formats)
{
    return bytes.startsWith("\x89PNG\r\n\x1a\n") || bytes.startsWith("\xff\xd8\xff") || isTiff(bytes) ||
           isHeif(bytes) || (formats == AllowedFormats::Bitmaps && isWebp(bytes));
}

} // namespace tessary::imaging
