#pragma once

#include "workers/recognizer/LineReading.h"
#include "workers/recognizer/Script.h"

namespace tessary::recognizer {

/// What readings of some lines by one script's model tell about the script they are really in.
class ScriptEvidence {
public:
    void add(const LineReading& reading);

    /// Whether hardly anything but Latin was read.
    [[nodiscard]] bool isLatin() const;
    /// Whether kana were read, more than a wrong reading of Chinese has.
    [[nodiscard]] bool hasKana() const;
    /// How sure the engine is of the Han characters, 0 to 100; 0 without any. A few bad ones count little.
    [[nodiscard]] double hanConfidence() const;
    /// How sure it is of all that it read, 0 to 100.
    [[nodiscard]] double confidence() const;

private:
    int m_symbols = 0;
    int m_letters = 0; ///< Of any script, and digits.
    int m_han = 0;
    int m_kana = 0;
    double m_sum = 0;
    double m_hanSum = 0;
};

/// Traditional or Simplified, by what both models made of the same lines. The model of Traditional reads
/// Simplified as well and is nearly as sure of it, but not the other way round: so it has to be surer, by
/// little. Without Han characters it is `otherwise`.
[[nodiscard]] Script chineseScript(const ScriptEvidence& simplified, const ScriptEvidence& traditional,
                                   Script otherwise);

} // namespace tessary::recognizer
