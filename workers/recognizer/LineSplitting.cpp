#include "workers/recognizer/LineSplitting.h"

namespace tessary::recognizer {
namespace {

/// How much of the mask each row of the line holds.
std::vector<int> rowSums(const TextLine& line, const GreyPlane& mask)
{
    std::vector<int> sums(size_t(line.box.height()), 0);
    for (const QRect& piece : line.pieces)
        for (int y = piece.top(); y <= piece.bottom(); ++y) {
            const uchar* row = mask.row(y);
            sums[size_t(y - line.box.top())] += int(
                std::count_if(row + piece.left(), row + piece.right() + 1, [](uchar v) { return v != 0; }));
        }
    return sums;
}

/// The row below which the second line begins, from the line's top; nothing where no row is sparse enough.
int cutRow(const std::vector<int>& sums, int usual)
{
    constexpr double kSparse = 0.35;
    const int margin = std::max(3, usual / 2);
    const int end = int(sums.size()) - margin;
    if (end <= margin)
        return 0;
    const auto least = std::min_element(sums.begin() + margin, sums.begin() + end);
    double mean = 0;
    for (const int sum : sums)
        mean += sum;
    mean /= double(sums.size());
    return *least <= mean * kSparse ? int(least - sums.begin()) : 0;
}

/// Whether a line stands right beside a bridge, or around it, and the bridge ends in it at that side.
bool isBeside(const QRect& bridge, const QRect& line)
{
    return bridge != line && line.width() > bridge.width() && line.height() < bridge.height() &&
           2 * commonHeight(bridge, line) >= line.height() && gapBetween(bridge, line) <= line.height();
}

/// The first lines beside a bridge that it ends in above and below; `lines.size()` where there is none.
std::pair<size_t, size_t> shoresOf(const std::vector<TextLine>& lines, size_t bridge)
{
    constexpr double kBeyond = 0.3;
    std::pair<size_t, size_t> shores{lines.size(), lines.size()};
    const QRect& box = lines[bridge].box;
    for (size_t i = 0; i < lines.size(); ++i) {
        const QRect& line = lines[i].box;
        const int beyond = int(line.height() * kBeyond);
        if (i == bridge || !isBeside(box, line) || 5 * box.width() > 8 * line.height())
            continue;
        if (std::abs(box.top() - line.top()) <= beyond ||
            (box.top() > line.top() && box.top() < line.bottom()))
            shores.first = i;
        else if (box.bottom() > line.top() && box.bottom() <= line.bottom() + beyond)
            shores.second = i;
    }
    return shores;
}

} // namespace

std::vector<TextLine> splitTouchingLines(TextLine line, const GreyPlane& mask)
{
    constexpr double kOneLine = 1.7; // of the usual piece's height, ascenders and descenders included
    const int usual = usualHeight(line);
    if (line.box.height() < usual * kOneLine)
        return {std::move(line)};
    const int cut = cutRow(rowSums(line, mask), usual);
    if (cut == 0)
        return {std::move(line)};
    TextLine upper;
    TextLine lower;
    const int cutAt = line.box.top() + cut;
    for (const QRect& piece : line.pieces) {
        const int above = cutAt - piece.top();
        const int below = piece.bottom() - cutAt + 1;
        constexpr int kSplinter = 4; // of a height: less stays with the rest
        if (above * kSplinter <= piece.height())
            lower.add(piece);
        else if (below * kSplinter <= piece.height())
            upper.add(piece);
        else {
            upper.add(QRect(piece.topLeft(), QSize(piece.width(), above)));
            lower.add(QRect(piece.left(), cutAt, piece.width(), below));
        }
    }
    if (upper.pieces.empty() || lower.pieces.empty())
        return {std::move(line)};
    std::vector<TextLine> result = splitTouchingLines(std::move(upper), mask);
    for (TextLine& part : splitTouchingLines(std::move(lower), mask))
        result.push_back(std::move(part));
    return result;
}

void cutBridges(std::vector<TextLine>& lines)
{
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto [upper, lower] = shoresOf(lines, i);
        if (upper == lines.size() || lower == lines.size() ||
            commonHeight(lines[upper].box, lines[lower].box) > 0)
            continue;
        const QRect box = lines[i].box;
        const int cut = (lines[upper].box.bottom() + lines[lower].box.top() + 1) / 2;
        lines[upper].add(QRect(box.topLeft(), QPoint(box.right(), cut - 1)));
        lines[lower].add(QRect(QPoint(box.left(), cut), box.bottomRight()));
        lines[i] = {};
    }
    std::erase_if(lines, [](const TextLine& line) { return line.pieces.empty(); });
}

} // namespace tessary::recognizer
