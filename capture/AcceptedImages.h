#pragma once

#include <QStringList>

namespace tessary {

/// The lower-cased extensions of picture files that are taken into the library.
[[nodiscard]] const QStringList& acceptedImageExtensions();

} // namespace tessary
