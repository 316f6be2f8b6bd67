#pragma once

#include "workers/imaging/VipsLibrary.h"

#include <QByteArrayView>

namespace tessary::imaging {

/// How many bytes from the start decide.
constexpr qsizetype kSignatureSize = 12;

/// Whether the bytes begin as a picture of an allowed format. Asked before any library sees them, since
/// even libvips' own guessing runs code of the blocked loaders.
[[nodiscard]] bool beginsAsAllowed(QByteArrayView bytes, AllowedFormats formats);

} // namespace tessary::imaging
