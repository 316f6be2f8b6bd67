#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/PictureView.h"

namespace tessary::recognizer {

/// What the edges of a picture tell; masks of its size.
struct EdgeMasks {
    GreyPlane writing;  ///< Where the colour changes from one pixel to the next, whatever is lighter.
    GreyPlane straight; ///< Long straight edges, which are not in the other.
};

/// Finds edges. Long straight ones, as of windows, bands, fields and rules, stand apart: there both sides
/// keep their colour for longer than a stroke of writing would.
[[nodiscard]] EdgeMasks findEdges(const PictureView& picture);

} // namespace tessary::recognizer
