#include "workers/recognizer/InkGaps.h"

namespace tessary::recognizer {
namespace {

std::vector<bool> inkedColumns(const GreyPlane& picture)
{
    constexpr uchar kInk = 150;
    std::vector<bool> columns(size_t(picture.width), false);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            if (picture.row(y)[x] < kInk)
                columns[size_t(x)] = true;
    return columns;
}

/// The longest run without ink between two columns, which may reach beyond them.
int widestGap(const std::vector<bool>& inked, int from, int to)
{
    int widest = 0;
    int run = 0;
    const int end = int(inked.size());
    int x = std::clamp(from, 0, end);
    while (x > 0 && x < end && !inked[size_t(x)] && !inked[size_t(x) - 1])
        --x;
    for (; x < end && (x < to || run > 0); ++x) {
        run = inked[size_t(x)] ? 0 : run + 1;
        widest = std::max(widest, run);
    }
    return widest;
}

} // namespace

void measureGaps(LineReading& reading, const GreyPlane& picture, int lineHeight)
{
    const std::vector<bool> inked = inkedColumns(picture);
    for (qsizetype i = 1; i < reading.size(); ++i) {
        const ReadSymbol& before = reading.at(i - 1);
        ReadSymbol& here = reading[i];
        here.gapBefore =
            double(widestGap(inked, (before.left + before.right) / 2, (here.left + here.right) / 2)) /
            std::max(1, lineHeight);
    }
}

} // namespace tessary::recognizer
