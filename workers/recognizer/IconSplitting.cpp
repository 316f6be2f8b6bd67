#include "workers/recognizer/IconSplitting.h"

#include <algorithm>

namespace tessary::recognizer {
namespace {

/// What stands closer together than characters do, from the left.
std::vector<TextLine> clustersOf(TextLine line, double gap)
{
    std::sort(line.pieces.begin(), line.pieces.end(),
              [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
    std::vector<TextLine> clusters;
    for (const QRect& piece : line.pieces) {
        if (clusters.empty() || gapBetween(clusters.back().box, piece) >= gap)
            clusters.push_back({});
        clusters.back().add(piece);
    }
    return clusters;
}

/// Whether something beside text is one figure, about square and no lower than the text.
bool isFigureBeside(const TextLine& cluster, int textHeight)
{
    constexpr double kLeastHeight = 0.75;
    constexpr double kNarrowest = 0.7;
    constexpr double kWidest = 1.25;
    const double height = cluster.box.height();
    return height >= textHeight * kLeastHeight && cluster.box.width() >= height * kNarrowest &&
           cluster.box.width() <= height * kWidest && clustersOf(cluster, 2).size() == 1;
}

/// Whether a line is no longer than a switch or a short word.
bool isShort(const QRect& box)
{
    constexpr double kWidest = 2.3;
    return box.width() <= box.height() * kWidest;
}

/// What stands beside the figure at an end of a line.
struct Surroundings {
    QRect text;    ///< All but the figure.
    QRect nearest; ///< What is next to it.
};

/// Whether the figure stands apart from text, rather than being a character before a comma or a bracket.
bool isIcon(const TextLine& figure, const Surroundings& around)
{
    constexpr double kGap = 0.42; // of the text's height
    constexpr double kSign = 0.55;
    const int height = around.text.height();
    return isFigureBeside(figure, height) && 2 * around.text.width() >= 3 * figure.box.width() &&
           gapBetween(figure.box, around.nearest) >= height * kGap &&
           around.nearest.height() >= height * kSign;
}

QRect boxOf(const std::vector<TextLine>& clusters)
{
    QRect box;
    for (const TextLine& cluster : clusters)
        box |= cluster.box;
    return box;
}

/// Whether something stands close by in the same row.
bool hasNeighbour(const QRect& box, const std::vector<TextLine>& lines)
{
    constexpr double kGap = 2.5;
    return std::any_of(lines.begin(), lines.end(), [&](const TextLine& other) {
        return other.box != box &&
               2 * commonHeight(box, other.box) > std::min(box.height(), other.box.height()) &&
               gapBetween(box, other.box) <= box.height() * kGap;
    });
}

/// Whether the line is right below or above a longer one: the end of a paragraph, a bracket in code.
bool continuesText(const QRect& box, const std::vector<TextLine>& lines)
{
    constexpr int kGap = 2;
    return std::any_of(lines.begin(), lines.end(), [&](const TextLine& other) {
        const int least = std::min(box.height(), other.box.height());
        return !other.maybeIcon && -commonHeight(box, other.box) <= least &&
               gapBetween(box, other.box) <= kGap * other.box.height() &&
               std::max(box.height(), other.box.height()) <= 2 * least;
    });
}

} // namespace

std::vector<TextLine> splitOffIcons(TextLine line)
{
    constexpr double kGap = 0.4; // of the pieces' height
    std::vector<TextLine> clusters = clustersOf(line, usualHeight(line) * kGap);
    std::vector<TextLine> parts;
    if (clusters.size() > 1) {
        const QRect text = boxOf({clusters.begin() + 1, clusters.end()});
        if (isIcon(clusters.front(), {text, clusters[1].box})) {
            parts.push_back(clusters.front());
            clusters.erase(clusters.begin());
        }
    }
    if (clusters.size() > 1) {
        const QRect text = boxOf({clusters.begin(), clusters.end() - 1});
        if (isIcon(clusters.back(), {text, clusters[clusters.size() - 2].box})) {
            parts.push_back(clusters.back());
            clusters.pop_back();
        }
    }
    TextLine rest;
    for (const TextLine& cluster : clusters)
        rest.add(cluster);
    parts.push_back(std::move(rest));
    return parts;
}

void markIcons(std::vector<TextLine>& lines)
{
    for (TextLine& line : lines)
        line.maybeIcon = isShort(line.box);
    const std::vector<TextLine> marked = lines;
    for (TextLine& line : lines)
        if (line.maybeIcon && !hasNeighbour(line.box, marked) && continuesText(line.box, marked))
            line.maybeIcon = false;
}

} // namespace tessary::recognizer
