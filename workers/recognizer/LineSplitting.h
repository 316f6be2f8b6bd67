#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// Cuts what is really several lines, one above the other, whose letters touch or overlap. The cuts go
/// where a row holds the least of the mask.
[[nodiscard]] std::vector<TextLine> splitTouchingLines(TextLine line, const GreyPlane& mask);

/// Cuts what reaches over two lines beside it, as two letters do that touch, and gives each line its part.
void cutBridges(std::vector<TextLine>& lines);

} // namespace tessary::recognizer
