#pragma once

#include <QList>
#include <QString>

namespace tessary::recognizer {

/// One character as the engine reads it.
struct ReadSymbol {
    QString text;
    int left = 0;             ///< Its first column in the picture that was read.
    int right = 0;            ///< The column behind its last.
    double confidence = 0;    ///< 0 to 100.
    bool blankBefore = false; ///< The engine sees a blank before it.
    double gapBefore = 0; ///< Free columns between it and the symbol before, as part of the line's height.
};

/// One line as the engine reads it.
using LineReading = QList<ReadSymbol>;

/// The mean of the symbols' confidences, 0 to 100; 0 for none.
[[nodiscard]] inline double meanConfidence(const LineReading& reading)
{
    double sum = 0;
    for (const ReadSymbol& symbol : reading)
        sum += symbol.confidence;
    return reading.isEmpty() ? 0 : sum / double(reading.size());
}

} // namespace tessary::recognizer
