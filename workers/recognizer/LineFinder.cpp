#include "workers/recognizer/LineFinder.h"

#include "workers/recognizer/EdgeMask.h"
#include "workers/recognizer/LineGrouping.h"

namespace tessary::recognizer {

namespace {

/// Whether a mask is set somewhere in or right beside a box.
bool touches(const QRect& box, const GreyPlane& mask)
{
    const QRect area = box.adjusted(-1, -1, 1, 1) & QRect(0, 0, mask.width, mask.height);
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const uchar* row = mask.row(y);
        if (std::any_of(row + area.left(), row + area.right() + 1, [](uchar value) { return value != 0; }))
            return true;
    }
    return false;
}

/// The end of a rule or a round corner of a frame is not writing.
bool isEndOfEdge(const Component& component, const EdgeMasks& edges)
{
    constexpr int kEnd = 12;
    constexpr int kCorner = 96;
    constexpr int kThickness = 4;
    const int size = std::max(component.box.width(), component.box.height());
    const bool thin = component.pixels <= size * kThickness;
    return (size <= kEnd || (size <= kCorner && thin)) && touches(component.box, edges.straight);
}

} // namespace

std::vector<TextLine> findLines(const PictureView& picture)
{
    const EdgeMasks edges = findEdges(picture);
    std::vector<Component> components = findComponents(edges.writing);
    std::erase_if(components, [&](const Component& component) { return isEndOfEdge(component, edges); });
    return groupIntoLines(components, edges.writing);
}

} // namespace tessary::recognizer
