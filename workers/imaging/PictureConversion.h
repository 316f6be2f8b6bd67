#pragma once

#include "workers/imaging/GObjectPointer.h"

#include <QByteArray>
#include <QImage>

#include <vips/vips.h>

namespace tessary::imaging {

/// What the operations make of a picture. Each decodes it, and throws ImagingFailure.

/// JPEG without metadata, transparent parts on white. @param quality 1 to 100.
[[nodiscard]] QByteArray toJpeg(VipsImage* image, int quality);

/// Format_ARGB32_Premultiplied, or Format_RGB32 where the picture has no transparency.
[[nodiscard]] QImage toQImage(VipsImage* image);

/// PNG, upright, of 8 or 16 bits as the picture, with its colour profile but no other metadata.
[[nodiscard]] QByteArray toPng(VipsImage* image);
/// The same of an image in Format_RGBA8888, or in Format_RGBX8888, which becomes a PNG without transparency.
[[nodiscard]] QByteArray toPng(const QImage& image);

} // namespace tessary::imaging
