#pragma once

#include "workers/recognizer/Components.h"
#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// Puts the pieces that stand beside each other into lines, at whatever size each line is written. What
/// cannot be writing (too large, too small, a bare rule) is left out.
/// @param mask whose pieces they are; where lines touch it tells where to cut.
[[nodiscard]] std::vector<TextLine> groupIntoLines(const std::vector<Component>& components,
                                                   const GreyPlane& mask);

} // namespace tessary::recognizer
