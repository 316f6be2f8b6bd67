#pragma once

#include "workers/imaging/GObjectPointer.h"

#include <QByteArray>

#include <vips/vips.h>

namespace tessary::imaging {

/// Whether these are the bytes of a Windows bitmap file, which libvips does not read.
[[nodiscard]] bool isWindowsBitmap(const QByteArray& bytes);

/// The picture in a Windows bitmap, in sRGB of 8 bits; four bands where it has transparency, else three.
/// @throws ImagingFailure; TooLarge above 2^28 pixels, before anything is decoded.
[[nodiscard]] GObjectPointer<VipsImage> readWindowsBitmap(const QByteArray& bytes);

} // namespace tessary::imaging
