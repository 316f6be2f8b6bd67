#pragma once

#include <QtGlobal>

#include <vector>

namespace tessary::recognizer {

/// One byte a pixel, rows without padding: a mask (0 or not) or a greyscale picture (0 is black).
struct GreyPlane {
    int width = 0;
    int height = 0;
    std::vector<uchar> pixels = {};

    GreyPlane() = default;
    GreyPlane(int ofWidth, int ofHeight, uchar value = 0)
        : width(ofWidth),
          height(ofHeight),
          pixels(size_t(ofWidth) * size_t(ofHeight), value)
    {
    }

    [[nodiscard]] uchar* row(int y) { return pixels.data() + size_t(y) * size_t(width); }
    [[nodiscard]] const uchar* row(int y) const { return pixels.data() + size_t(y) * size_t(width); }
    [[nodiscard]] bool isEmpty() const { return pixels.empty(); }
};

} // namespace tessary::recognizer
