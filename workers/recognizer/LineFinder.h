#pragma once

#include "workers/recognizer/PictureView.h"
#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {

/// The lines of text in a picture of a screen, in no order: dark on light and light on dark, at any size,
/// without what belongs to windows and icons. Not all of it need turn out to be text.
[[nodiscard]] std::vector<TextLine> findLines(const PictureView& picture);

} // namespace tessary::recognizer
