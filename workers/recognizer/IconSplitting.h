#pragma once

#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// Takes what may be an icon off the ends of a line: one figure, about square, that stands further from the
/// text than its words from each other. It becomes a line of its own.
[[nodiscard]] std::vector<TextLine> splitOffIcons(TextLine line);

/// Sets `maybeIcon` of the lines that are no longer than a switch or a very short word, unless they go on
/// with the text above or below.
void markIcons(std::vector<TextLine>& lines);

} // namespace tessary::recognizer
