#include "workers/recognizer/LineNormalizer.h"

#include "workers/recognizer/CubicScaling.h"

#include <array>
#include <cmath>

namespace tessary::recognizer {
namespace {

constexpr uchar kWhite = 255;

/// Counts colours, the alike as one, and knows their mean.
class ColourCount {
public:
    void add(quint32 colour)
    {
        Bin& bin = m_bins[binOf(colour)];
        ++bin.count;
        if (bin.count > m_bins[m_most].count)
            m_most = binOf(colour);
        bin.last = colour;
    }
    /// One of the most frequent colours.
    [[nodiscard]] quint32 mostFrequent() const { return m_bins[m_most].last; }

private:
    static constexpr unsigned kBits = 4;
    struct Bin {
        int count = 0;
        quint32 last = 0;
    };
    static size_t binOf(quint32 colour)
    {
        constexpr quint32 kHigh = 0xf;
        return ((colour >> 20U) & kHigh) << (2 * kBits) | ((colour >> 12U) & kHigh) << kBits |
               ((colour >> 4U) & kHigh);
    }
    std::array<Bin, size_t{1} << (3 * kBits)> m_bins{};
    size_t m_most = 0;
};

/// The background of each column: the most frequent colour around it.
std::vector<quint32> backgroundOf(const PictureView& picture, const QRect& area)
{
    const int step = std::max(2, area.height() / 4);
    const int reach = std::max(8, area.height() * 3 / 4);
    std::vector<quint32> result(size_t(area.width()));
    for (int x = 0; x < area.width(); x += step) {
        ColourCount count;
        const int begin = std::max(0, x + step / 2 - reach) + area.left();
        const int end = std::min(area.width(), x + step / 2 + reach) + area.left();
        for (int y = area.top(); y <= area.bottom(); ++y) {
            const quint32* row = picture.row(y);
            for (int k = begin; k < end; ++k)
                count.add(row[k]);
        }
        std::fill(result.begin() + x, result.begin() + std::min(area.width(), x + step),
                  count.mostFrequent());
    }
    return result;
}

/// The most in the neighbourhood of each.
std::vector<int> widened(const std::vector<int>& values, int reach)
{
    std::vector<int> result(values.size());
    const int count = int(values.size());
    for (int i = 0; i < count; ++i)
        result[size_t(i)] = *std::max_element(values.begin() + std::max(0, i - reach),
                                              values.begin() + std::min(count, i + reach + 1));
    return result;
}

/// Distance from the background becomes darkness, full where the strongest ink around is.
GreyPlane stretched(const GreyPlane& distance)
{
    constexpr int kLeastInk = 40;
    constexpr double kNoise = 0.08;
    std::vector<int> strongest(size_t(distance.width), kLeastInk);
    for (int y = 0; y < distance.height; ++y)
        for (int x = 0; x < distance.width; ++x)
            strongest[size_t(x)] = std::max(strongest[size_t(x)], int(distance.row(y)[x]));
    strongest = widened(strongest, 2 * distance.height);
    GreyPlane result(distance.width, distance.height);
    for (int y = 0; y < distance.height; ++y)
        for (int x = 0; x < distance.width; ++x) {
            const double ink = double(distance.row(y)[x]) / strongest[size_t(x)];
            result.row(y)[x] = ink < kNoise ? kWhite : uchar(std::lround(kWhite * (1 - ink)));
        }
    return result;
}

} // namespace

GreyPlane darkOnWhite(const PictureView& picture, const TextLine& line)
{
    constexpr int kMargin = 2;
    const QRect area =
        line.box.adjusted(-kMargin, -1, kMargin, 1) & QRect(0, 0, picture.width, picture.height);
    const std::vector<quint32> background = backgroundOf(picture, area);
    GreyPlane distance(area.width(), area.height());
    for (int y = 0; y < area.height(); ++y) {
        const quint32* row = picture.row(area.top() + y) + area.left();
        uchar* target = distance.row(y);
        for (int x = 0; x < area.width(); ++x)
            target[x] = uchar(colourDistance(row[x], background[size_t(x)]));
    }
    return stretched(distance);
}

GreyPlane normalized(const PictureView& picture, const TextLine& line, LineSize size)
{
    const GreyPlane dark = darkOnWhite(picture, line);
    constexpr int kWidest = 16000;
    const double factor = double(size.height) / std::max(1, line.box.height());
    const int width = std::clamp(int(std::lround(dark.width * factor)), 1, kWidest);
    const int height = std::max(1, int(std::lround(dark.height * factor)));
    return padded(scaled(dark, width, height), size.padding);
}

GreyPlane padded(const GreyPlane& picture, int padding)
{
    GreyPlane result(picture.width + 2 * padding, picture.height + 2 * padding, kWhite);
    for (int y = 0; y < picture.height; ++y)
        std::copy_n(picture.row(y), picture.width, result.row(y + padding) + padding);
    return result;
}

} // namespace tessary::recognizer
