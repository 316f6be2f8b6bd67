#include "workers/recognizer/LineGrouping.h"

#include "workers/recognizer/DisjointSets.h"
#include "workers/recognizer/IconSplitting.h"
#include "workers/recognizer/LineSplitting.h"

namespace tessary::recognizer {
namespace {

constexpr int kLargestHeight = 200;
constexpr int kLeastLineHeight = 5;

bool mayBeWriting(const Component& component)
{
    constexpr int kLeastPixels = 3;
    constexpr int kRuleWidth = 48;
    constexpr int kRuleThickness = 4;
    const QRect& box = component.box;
    const bool rule = (box.height() <= kRuleThickness && box.width() >= kRuleWidth) ||
                      (box.width() <= kRuleThickness && box.height() >= kRuleWidth);
    return component.pixels >= kLeastPixels && box.height() <= kLargestHeight && !rule;
}

/// Whether two pieces stand side by side at about one size.
bool areNeighbours(const QRect& one, const QRect& other)
{
    constexpr double kMostRatio = 1.7;
    constexpr double kGap = 1.1; // of the taller one's height
    const int small = std::min(one.height(), other.height());
    const int large = std::max(one.height(), other.height());
    return large <= small * kMostRatio && 2 * commonHeight(one, other) >= small &&
           gapBetween(one, other) <= large * kGap;
}

/// Whether a line belongs to another that is as high or higher: the rest of its row, or a dot, a dash or a
/// comma of it.
bool belongsTo(const TextLine& guest, const TextLine& host)
{
    constexpr double kSmall = 0.6;
    constexpr double kBelowOrAbove = 0.3;
    constexpr double kGap = 1.2;
    constexpr double kRow = 0.7;
    constexpr double kLong = 2.5;
    const QRect& line = guest.box;
    const QRect& other = host.box;
    if (other.contains(line))
        return true;
    const double height = other.height();
    if (gapBetween(line, other) > height * kGap)
        return false;
    if (line.height() > height * kSmall)
        return commonHeight(line, other) >= line.height() * kRow && line.height() * 2 > other.height();
    // Text beside something large is not a part of that.
    const bool isLong = other.width() >= std::max<double>(line.width(), height * kLong);
    if (!isLong && (line.width() > height * kGap || gapBetween(line, other) > height / 2))
        return false;
    const double centre = line.top() + line.height() / 2.0;
    return centre >= other.top() - height * kBelowOrAbove &&
           centre <= other.bottom() + height * kBelowOrAbove;
}

/// Joins what `areJoined` says. The boxes come by their left sides, and none reaches further than `reach`.
template <typename Boxes, typename BoxOf, typename Condition>
DisjointSets joinBeside(const Boxes& sorted, BoxOf boxOf, Condition areJoined)
{
    DisjointSets sets(sorted.size());
    for (size_t i = 0; i < sorted.size(); ++i) {
        const QRect& one = boxOf(sorted[i]);
        constexpr double kReach = 1.2 * 2.6;
        const double reach = one.right() + std::max(one.height() * kReach, 12.0);
        for (size_t k = i + 1; k < sorted.size() && boxOf(sorted[k]).left() <= reach; ++k)
            if (areJoined(one, boxOf(sorted[k])))
                sets.join(i, k);
    }
    return sets;
}

std::vector<TextLine> joinPieces(std::vector<QRect> pieces)
{
    std::sort(pieces.begin(), pieces.end(),
              [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
    DisjointSets sets = joinBeside(
        pieces, [](const QRect& box) { return box; }, areNeighbours);
    std::vector<TextLine> lines;
    std::vector<size_t> places(pieces.size(), pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i) {
        size_t& place = places[sets.find(i)];
        if (place == pieces.size()) {
            place = lines.size();
            lines.push_back({});
        }
        lines[place].add(pieces[i]);
    }
    return lines;
}

/// Lines by their top, so that those near another are found without asking all.
class LinesByTop {
public:
    explicit LinesByTop(const std::vector<TextLine>& lines) : m_order(lines.size())
    {
        for (size_t i = 0; i < lines.size(); ++i) {
            m_order[i] = {lines[i].box.top(), i};
            m_tallest = std::max(m_tallest, lines[i].box.height());
        }
        std::sort(m_order.begin(), m_order.end());
    }
    /// Calls with the index of each line that may share rows with the box, or nearly so.
    template <typename Visit>
    void near(const QRect& box, Visit visit) const
    {
        auto entry = std::lower_bound(m_order.begin(), m_order.end(),
                                      std::pair<int, size_t>(box.top() - 2 * m_tallest, 0));
        for (; entry != m_order.end() && entry->first <= box.bottom() + m_tallest; ++entry)
            visit(entry->second);
    }

private:
    std::vector<std::pair<int, size_t>> m_order;
    int m_tallest = 0;
};

/// Which of the lines takes this one in: the nearest by height; `lines.size()` for none.
size_t hostOf(const std::vector<TextLine>& lines, const LinesByTop& byTop, size_t guest)
{
    size_t best = lines.size();
    double bestDistance = 0;
    const QRect box = lines[guest].box;
    byTop.near(box, [&](size_t i) {
        const QRect& other = lines[i].box;
        const bool comesFirst =
            other.height() > box.height() || (other.height() == box.height() && i < guest);
        if (i == guest || other.isEmpty() || !comesFirst || !belongsTo(lines[guest], lines[i]))
            return;
        const double distance = std::abs(box.center().y() - other.center().y()) / double(other.height()) +
                                std::max(0, gapBetween(box, other)) / double(other.height());
        if (best == lines.size() || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    });
    return best;
}

/// Gives dots, commas and the rest of a row to their lines, the smallest first. @returns whether any had one.
bool joinOnce(std::vector<TextLine>& lines)
{
    const LinesByTop byTop(lines);
    std::vector<size_t> order(lines.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(),
              [&](size_t a, size_t b) { return lines[a].box.height() < lines[b].box.height(); });
    bool joined = false;
    for (const size_t guest : order) {
        const size_t host = hostOf(lines, byTop, guest);
        if (host == lines.size())
            continue;
        lines[host].add(lines[guest]);
        lines[guest] = {};
        joined = true;
    }
    std::erase_if(lines, [](const TextLine& line) { return line.pieces.empty(); });
    return joined;
}

/// Of more pieces than a screen full of text has only the largest: the picture is something else.
void dropSpeckles(std::vector<QRect>& pieces)
{
    constexpr qsizetype kMost = 20'000;
    if (std::ssize(pieces) <= kMost)
        return;
    const auto size = [](const QRect& box) { return box.width() + box.height(); };
    std::nth_element(pieces.begin(), pieces.begin() + kMost, pieces.end(),
                     [&](const QRect& a, const QRect& b) { return size(a) > size(b); });
    pieces.resize(size_t(kMost));
}

std::vector<TextLine> joinLines(std::vector<TextLine> lines)
{
    // Lines grow, and then reach others that had been too far away.
    constexpr int kMostRounds = 4;
    for (int round = 0; round < kMostRounds && joinOnce(lines); ++round) {
    }
    std::erase_if(lines, [](const TextLine& line) { return line.box.height() < kLeastLineHeight; });
    return lines;
}

} // namespace

std::vector<TextLine> groupIntoLines(const std::vector<Component>& components, const GreyPlane& mask)
{
    std::vector<QRect> pieces;
    for (const Component& component : components)
        if (mayBeWriting(component))
            pieces.push_back(component.box);
    dropSpeckles(pieces);
    std::vector<TextLine> lines;
    for (TextLine& line : joinPieces(std::move(pieces)))
        for (TextLine& part : splitTouchingLines(std::move(line), mask))
            lines.push_back(std::move(part));
    cutBridges(lines);
    std::vector<TextLine> result;
    for (TextLine& line : joinLines(std::move(lines)))
        for (TextLine& part : splitOffIcons(std::move(line)))
            result.push_back(std::move(part));
    markIcons(result);
    return result;
}

} // namespace tessary::recognizer
