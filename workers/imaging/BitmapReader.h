#pragma once

#include <QByteArray>
#include <QImage>

namespace tessary::imaging {

/// Whether these are the bytes of a Windows bitmap file, which libvips does not read.
[[nodiscard]] bool isWindowsBitmap(const QByteArray& bytes);

/// The picture in a Windows bitmap: Format_RGBA8888 where it has transparency, else Format_RGBX8888.
/// @throws ImagingFailure; TooLarge above 2^28 pixels, before anything is decoded.
[[nodiscard]] QImage readWindowsBitmap(QByteArray bytes);

} // namespace tessary::imaging
