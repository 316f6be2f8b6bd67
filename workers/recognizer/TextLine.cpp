#include "workers/recognizer/TextLine.h"

#include <algorithm>

namespace tessary::recognizer {

int usualHeight(const TextLine& line)
{
    std::vector<QRect> pieces = line.pieces;
    std::sort(pieces.begin(), pieces.end(),
              [](const QRect& a, const QRect& b) { return a.height() < b.height(); });
    int total = 0;
    for (const QRect& piece : pieces)
        total += piece.width();
    int sum = 0;
    for (const QRect& piece : pieces) {
        sum += piece.width();
        if (2 * sum >= total)
            return piece.height();
    }
    return line.box.height();
}

} // namespace tessary::recognizer
