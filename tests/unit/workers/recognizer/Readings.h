#pragma once

#include "workers/recognizer/LineReading.h"

namespace tessary::testing {

/// A reading of these characters, one column each. A blank is what the engine sees between two, with a gap as
/// wide as that of a real one.
[[nodiscard]] inline recognizer::LineReading readingOf(const QString& text, double confidence = 99)
{
    constexpr double kNarrow = 0.1;
    constexpr double kBlank = 0.35;
    recognizer::LineReading reading;
    bool blank = false;
    for (const QChar character : text) {
        if (character == QLatin1Char(' ')) {
            blank = true;
            continue;
        }
        const int column = int(reading.size());
        reading.append({.text = QString(character),
                        .left = column,
                        .right = column + 1,
                        .confidence = confidence,
                        .blankBefore = blank,
                        .gapBefore = blank ? kBlank : kNarrow});
        blank = false;
    }
    return reading;
}

} // namespace tessary::testing
