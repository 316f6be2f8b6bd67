#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstdlib>

namespace tessary::recognizer {

/// The pixels of a picture that somebody else owns: rows without padding, as QImage::Format_RGB32.
struct PictureView {
    const quint32* pixels = nullptr;
    int width = 0;
    int height = 0;

    [[nodiscard]] const quint32* row(int y) const { return pixels + qsizetype{y} * width; }
};

/// How different two colours are, 0 to 255: the most of what their red, green and blue differ.
[[nodiscard]] inline int colourDistance(quint32 one, quint32 other)
{
    constexpr quint32 kByte = 0xff;
    constexpr unsigned kGreen = 8;
    constexpr unsigned kRed = 16;
    const int blue = std::abs(int(one & kByte) - int(other & kByte));
    const int green = std::abs(int((one >> kGreen) & kByte) - int((other >> kGreen) & kByte));
    const int red = std::abs(int((one >> kRed) & kByte) - int((other >> kRed) & kByte));
    return std::max({blue, green, red});
}

} // namespace tessary::recognizer
