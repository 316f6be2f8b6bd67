#include "workers/recognizer/EdgeMask.h"

namespace tessary::recognizer {
namespace {

constexpr int kLeastContrast = 24;
/// What neighbours may differ and still count as one colour: a slight gradient.
constexpr int kSameColour = 4;
constexpr int kLongRow = 64;
constexpr int kLongColumn = 40;

/// Marks the pixels that lie in a long run of one colour.
void markLongRuns(const quint32* row, int width, std::vector<uchar>& marks)
{
    int start = 0;
    for (int x = 1; x <= width; ++x) {
        if (x < width && colourDistance(row[x - 1], row[x]) <= kSameColour)
            continue;
        std::fill(marks.begin() + start, marks.begin() + x, uchar(x - start >= kLongRow ? 1 : 0));
        start = x;
    }
}

/// The same for columns. Counts from above, then adds the count from below.
GreyPlane longColumns(const PictureView& picture)
{
    GreyPlane plane(picture.width, picture.height);
    std::vector<uchar> count(size_t(picture.width), 0);
    const auto step = [](uchar before, bool same) {
        return uchar(same ? std::min(before + 1, kLongColumn) : 0);
    };
    for (int y = 1; y < picture.height; ++y) {
        const quint32* above = picture.row(y - 1);
        const quint32* here = picture.row(y);
        uchar* marks = plane.row(y);
        for (int x = 0; x < picture.width; ++x) {
            const auto column = size_t(x);
            count[column] = step(count[column], colourDistance(above[x], here[x]) <= kSameColour);
            marks[x] = count[column];
        }
    }
    std::fill(count.begin(), count.end(), uchar(0));
    for (int y = picture.height - 1; y >= 0; --y) {
        const quint32* here = picture.row(y);
        const quint32* below = y + 1 < picture.height ? picture.row(y + 1) : nullptr;
        uchar* marks = plane.row(y);
        for (int x = 0; x < picture.width; ++x) {
            const auto column = size_t(x);
            count[column] = step(count[column], below && colourDistance(here[x], below[x]) <= kSameColour);
            marks[x] = marks[x] + count[column] + 1 >= kLongColumn ? 1 : 0;
        }
    }
    return plane;
}

} // namespace

EdgeMasks findEdges(const PictureView& picture)
{
    EdgeMasks masks{GreyPlane(picture.width, picture.height), GreyPlane(picture.width, picture.height)};
    if (picture.width < 2 || picture.height < 2)
        return masks;
    const GreyPlane columns = longColumns(picture);
    std::vector<uchar> rowsHere(size_t(picture.width));
    std::vector<uchar> rowsBelow(size_t(picture.width));
    markLongRuns(picture.row(0), picture.width, rowsHere);
    for (int y = 0; y + 1 < picture.height; ++y, std::swap(rowsHere, rowsBelow)) {
        const quint32* here = picture.row(y);
        const quint32* below = picture.row(y + 1);
        const uchar* longHere = columns.row(y);
        markLongRuns(below, picture.width, rowsBelow);
        for (int x = 0; x + 1 < picture.width; ++x) {
            const bool downwards = colourDistance(here[x], below[x]) >= kLeastContrast;
            const bool sideways = colourDistance(here[x], here[x + 1]) >= kLeastContrast;
            const bool flatDown = rowsHere[size_t(x)] != 0 && rowsBelow[size_t(x)] != 0;
            const bool flatAside = longHere[x] != 0 && longHere[x + 1] != 0;
            masks.writing.row(y)[x] = (downwards && !flatDown) || (sideways && !flatAside) ? 1 : 0;
            masks.straight.row(y)[x] = (downwards && flatDown) || (sideways && flatAside) ? 1 : 0;
        }
    }
    return masks;
}

} // namespace tessary::recognizer
