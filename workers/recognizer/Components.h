#pragma once

#include "workers/recognizer/GreyPlane.h"

#include <QRect>

namespace tessary::recognizer {

/// One connected piece of a mask.
struct Component {
    QRect box;
    int pixels = 0; ///< How many of the mask it holds.
};

/// The pieces of a mask, diagonal neighbours included, by their topmost row.
[[nodiscard]] std::vector<Component> findComponents(const GreyPlane& mask);

} // namespace tessary::recognizer
