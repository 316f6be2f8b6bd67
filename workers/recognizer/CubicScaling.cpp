#include "workers/recognizer/CubicScaling.h"

#include <algorithm>
#include <cmath>

namespace tessary::recognizer {
namespace {

/// Keys' cubic with a = -0.5: sharp, with little overshoot.
double cubic(double x)
{
    constexpr double kA = -0.5;
    x = std::abs(x);
    if (x < 1)
        return ((kA + 2) * x - (kA + 3)) * x * x + 1;
    if (x < 2)
        return ((kA * x - 5 * kA) * x + 8 * kA) * x - 4 * kA;
    return 0;
}

/// What one pixel of the result is made of.
struct Taps {
    int first = 0;
    std::vector<float> weights = {};
};

std::vector<Taps> tapsFor(int from, int to)
{
    constexpr double kRadius = 2;
    const double ratio = double(from) / to;
    const double stretch = std::max(1.0, ratio);
    std::vector<Taps> result(static_cast<size_t>(to));
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * ratio;
        Taps& taps = result[size_t(i)];
        taps.first = std::max(0, int(std::floor(centre - kRadius * stretch)));
        const int end = std::min(from, int(std::ceil(centre + kRadius * stretch)));
        double sum = 0;
        for (int k = taps.first; k < end; ++k) {
            const double weight = cubic((k + 0.5 - centre) / stretch);
            taps.weights.push_back(float(weight));
            sum += weight;
        }
        for (float& weight : taps.weights)
            weight = float(weight / sum);
    }
    return result;
}

uchar toByte(float value)
{
    constexpr float kMost = 255;
    return uchar(std::clamp(value + 0.5F, 0.0F, kMost));
}

} // namespace

GreyPlane scaled(const GreyPlane& picture, int width, int height)
{
    const std::vector<Taps> across = tapsFor(picture.width, width);
    const std::vector<Taps> down = tapsFor(picture.height, height);
    std::vector<float> wide(size_t(picture.height) * size_t(width));
    for (int y = 0; y < picture.height; ++y) {
        const uchar* row = picture.row(y);
        for (int x = 0; x < width; ++x) {
            const Taps& taps = across[size_t(x)];
            float sum = 0;
            for (size_t k = 0; k < taps.weights.size(); ++k)
                sum += taps.weights[k] * float(row[size_t(taps.first) + k]);
            wide[size_t(y) * size_t(width) + size_t(x)] = sum;
        }
    }
    GreyPlane result(width, height);
    std::vector<float> sums(static_cast<size_t>(width));
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0F);
        const Taps& taps = down[size_t(y)];
        for (size_t k = 0; k < taps.weights.size(); ++k) {
            const float* row = wide.data() + (size_t(taps.first) + k) * size_t(width);
            for (size_t x = 0; x < size_t(width); ++x)
                sums[x] += taps.weights[k] * row[x];
        }
        std::transform(sums.begin(), sums.end(), result.row(y), toByte);
    }
    return result;
}

} // namespace tessary::recognizer
