#pragma once

#include "workers/imaging/ImagingFailure.h"

namespace tessary::imaging {

enum class AllowedFormats {
    Files,   ///< PNG, JPEG, TIFF, HEIF.
    Bitmaps, ///< WebP besides.
};

/// Starts libvips: one thread, no caches, silent. To be called once, before any other use.
/// @returns false when the library does not start.
[[nodiscard]] bool startVips(const char* programName);

/// Decides what the loaders accept from now on; everything else is blocked, whatever a file is named.
void allowFormats(AllowedFormats formats);

/// What libvips says went wrong, which it forgets thereby: TooLarge for want of memory, else NotAnImage.
[[nodiscard]] ImagingFailure vipsFailure();

} // namespace tessary::imaging
