#pragma once

#include "workers/recognizer/ReadLine.h"

namespace tessary::recognizer {

/// Makes one line of those that follow each other in a row with no more than a wide blank between them, with
/// one blank.
/// @param lines in reading order.
[[nodiscard]] QList<ReadLine> joinRows(const QList<ReadLine>& lines);

} // namespace tessary::recognizer
