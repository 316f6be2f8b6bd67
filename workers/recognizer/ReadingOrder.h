#pragma once

#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// Puts lines in the order in which they are read: from above, and from the left within a row.
void sortForReading(std::vector<TextLine>& lines);

} // namespace tessary::recognizer
