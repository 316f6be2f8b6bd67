#include "workers/recognizer/ReadingOrder.h"

#include <algorithm>

namespace tessary::recognizer {
namespace {

bool inOneRow(const QRect& one, const QRect& other)
{
    return 2 * commonHeight(one, other) > std::min(one.height(), other.height());
}

} // namespace

void sortForReading(std::vector<TextLine>& lines)
{
    std::sort(lines.begin(), lines.end(),
              [](const TextLine& a, const TextLine& b) { return a.box.center().y() < b.box.center().y(); });
    for (auto row = lines.begin(); row != lines.end();) {
        const QRect first = row->box;
        const auto end =
            std::find_if(row, lines.end(), [&](const TextLine& line) { return !inOneRow(first, line.box); });
        std::sort(row, end, [](const TextLine& a, const TextLine& b) { return a.box.left() < b.box.left(); });
        row = end;
    }
}

} // namespace tessary::recognizer
