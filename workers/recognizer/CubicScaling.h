#pragma once

#include "workers/recognizer/GreyPlane.h"

namespace tessary::recognizer {

/// The picture at another size (at least 1 x 1), by a cubic filter that is widened when it gets smaller.
[[nodiscard]] GreyPlane scaled(const GreyPlane& picture, int width, int height);

} // namespace tessary::recognizer
