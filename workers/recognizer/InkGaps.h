#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/LineReading.h"

namespace tessary::recognizer {

/// Fills in `gapBefore` from the picture that was read, dark on white: the engine knows only roughly where
/// its symbols are, and blanks that are none are what it gets wrong most.
/// @param lineHeight of the ink, pixels.
void measureGaps(LineReading& reading, const GreyPlane& picture, int lineHeight);

} // namespace tessary::recognizer
