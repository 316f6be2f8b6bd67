#pragma once

#include "workers/recognizer/LineReading.h"

namespace tessary::recognizer {

/// Whether there is a word of Latin in the reading.
[[nodiscard]] bool hasLatinRun(const LineReading& wide);

/// The reading of a line in which Han and Latin stand side by side, with those words of Latin as the model of
/// Latin reads them that both read nearly alike: the others mistake letters such as l and L, and see some
/// twice.
/// @param wide by the model of another script. @param latin of the same line by that of Latin.
[[nodiscard]] LineReading withLatinRuns(const LineReading& wide, const LineReading& latin);

} // namespace tessary::recognizer
