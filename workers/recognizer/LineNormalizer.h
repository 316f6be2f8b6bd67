#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/PictureView.h"
#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// How the engine gets to see a line.
struct LineSize {
    int height = 36;  ///< Of the ink, pixels.
    int padding = 12; ///< White on each side, pixels.
};

/// The line dark on white, whatever its colours are and however often they change along it.
[[nodiscard]] GreyPlane darkOnWhite(const PictureView& picture, const TextLine& line);

/// Dark on white at the size that the engine reads best.
[[nodiscard]] GreyPlane normalized(const PictureView& picture, const TextLine& line, LineSize size = {});

/// The picture with that much white around it.
[[nodiscard]] GreyPlane padded(const GreyPlane& picture, int padding);

} // namespace tessary::recognizer
