#pragma once

#include <QByteArray>
#include <QImage>

namespace tessary::testing {

/// A picture that differs with the seed; never all one colour.
[[nodiscard]] QImage picture(int width, int height, int seed = 1);
[[nodiscard]] QByteArray pngOf(const QImage& image);
[[nodiscard]] QByteArray bmpOf(const QImage& image);
/// Uncompressed, little-endian, one strip.
[[nodiscard]] QByteArray tiffOf(const QImage& image);

} // namespace tessary::testing
