#pragma once

#include "workers/imaging/GObjectPointer.h"
#include "workers/imaging/VipsLibrary.h"

#include <vips/vips.h>

namespace tessary::imaging {

using Picture = GObjectPointer<VipsImage>;

/// Runs one libvips operation whose last fixed argument is its result. @throws ImagingFailure.
template <typename Operation>
Picture apply(Operation operation)
{
    VipsImage* result = nullptr;
    if (operation(&result) != 0)
        throw vipsFailure();
    return Picture(result);
}

} // namespace tessary::imaging
