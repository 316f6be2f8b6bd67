#include "workers/recognizer/LineFinder.h"

#include "workers/recognizer/EdgeMask.h"
#include "workers/recognizer/LineGrouping.h"

namespace tessary::recognizer {

std::vector<TextLine> findLines(const PictureView& picture)
{
    const GreyPlane mask = edgeMask(picture);
    return groupIntoLines(findComponents(mask), mask);
}

} // namespace tessary::recognizer
