#pragma once

#include <QRegion>
#include <QSize>

namespace tessary {

/// The shape of a window with round corners where nothing is translucent. Logical pixels.
[[nodiscard]] QRegion roundedMask(const QSize& size, int radius);

} // namespace tessary
