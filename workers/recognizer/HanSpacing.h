#pragma once

#include "workers/recognizer/LineReading.h"

namespace tessary::recognizer {

/// Whether a character is as wide as it is high: Han, kana, full-width signs.
[[nodiscard]] bool isWide(char32_t character);

/// The text of a line, with the blanks that the picture shows: where Han is involved the width of the gaps
/// tells, as do the signs, which are full-width where they take the room of one; elsewhere the engine does.
[[nodiscard]] QString textOf(const LineReading& reading);

} // namespace tessary::recognizer
