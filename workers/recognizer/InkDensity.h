#pragma once

#include "workers/recognizer/GreyPlane.h"

namespace tessary::recognizer {

/// How many strokes lie above each other in the densest part of a line.
/// @param plane dark on white.
/// @param width of the part, pixels. @returns the mean over its columns; 0 for a narrower line.
[[nodiscard]] double densestStrokes(const GreyPlane& plane, int width);

} // namespace tessary::recognizer
