#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/PictureView.h"

namespace tessary::recognizer {

/// Where the colour changes from one pixel to the next, whatever is lighter; a mask of the picture's size.
///
/// Long straight edges, as of windows, bands, fields and rules, are left out: there both sides keep their
/// colour for longer than a stroke of writing would.
[[nodiscard]] GreyPlane edgeMask(const PictureView& picture);

} // namespace tessary::recognizer
