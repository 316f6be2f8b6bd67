#pragma once

#include "workers/recognizer/LineReading.h"

namespace tessary::recognizer {

/// Whether a character is as wide as it is high: Han, kana, full-width signs.
[[nodiscard]] bool isWide(char32_t character);

/// The text of a line, with the blanks that are there: the engine's own between Latin words and between Latin
/// and Han, none between Han characters and none beside full-width signs.
[[nodiscard]] QString textOf(const LineReading& reading);

} // namespace tessary::recognizer
