#pragma once

#include <QRectF>

/// Where a selection lies in the picture of its screen.
namespace tessary::ScreenCaptureGeometry {

/// @param globalRect on the desktop, logical pixels.
/// @param screenFrame of its screen, in the same coordinates.
/// @param captureSize of the screen's picture, in units of any size.
/// @returns the part of the picture, in those units from its top left, clipped to it; empty for a screen
///          without extent.
[[nodiscard]] QRectF sourceRect(const QRectF& globalRect, const QRectF& screenFrame,
                                const QSizeF& captureSize);

} // namespace tessary::ScreenCaptureGeometry
