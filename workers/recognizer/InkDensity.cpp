#include "workers/recognizer/InkDensity.h"

#include <algorithm>

namespace tessary::recognizer {
namespace {

constexpr uchar kDark = 128;

/// Strokes that each column crosses.
std::vector<int> strokesOf(const GreyPlane& plane)
{
    std::vector<int> strokes(size_t(plane.width), 0);
    for (int y = 0; y < plane.height; ++y) {
        const uchar* const row = plane.row(y);
        const uchar* const above = y > 0 ? plane.row(y - 1) : nullptr;
        for (int x = 0; x < plane.width; ++x)
            strokes[size_t(x)] += row[x] < kDark && (above == nullptr || above[x] >= kDark) ? 1 : 0;
    }
    return strokes;
}

} // namespace

double densestStrokes(const GreyPlane& plane, int width)
{
    if (width < 1 || plane.width < width)
        return 0;
    const std::vector<int> strokes = strokesOf(plane);
    int sum = 0;
    int most = 0;
    for (int x = 0; x < plane.width; ++x) {
        sum += strokes[size_t(x)] - (x >= width ? strokes[size_t(x - width)] : 0);
        most = std::max(most, sum);
    }
    return double(most) / width;
}

} // namespace tessary::recognizer
