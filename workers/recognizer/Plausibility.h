#pragma once

#include "workers/recognizer/LineReading.h"

namespace tessary::recognizer {

/// Whether what was read is text rather than what an engine makes of icons and pictures.
/// @param maybeIcon so short that it has to be surer.
[[nodiscard]] bool isPlausible(const LineReading& reading, bool maybeIcon);

} // namespace tessary::recognizer
