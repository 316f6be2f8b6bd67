#pragma once

#include "workers/recognizer/LineReading.h"
#include "workers/recognizer/Script.h"

#include <optional>

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
    /// The Han characters of each reading.
    [[nodiscard]] const QStringList& han() const { return m_hanTexts; }
    /// How sure it is of all that it read, 0 to 100.
    [[nodiscard]] double confidence() const;

private:
    int m_symbols = 0;
    int m_letters = 0; ///< Of any script, and digits.
    int m_han = 0;
    int m_kana = 0;
    double m_sum = 0;
    double m_hanSum = 0;
    QStringList m_hanTexts;
};

/// How much surer the model of Traditional is than that of Simplified of the same lines. It reads Simplified
/// as well, nearly as surely, but not the other way round: from about 0 on they are Traditional. Nothing
/// without Han characters.
[[nodiscard]] std::optional<double> leadOfTraditional(const ScriptEvidence& simplified,
                                                      const ScriptEvidence& traditional);

/// Where the two differ, how much more often the model of Japanese reads what that of Traditional does, -1 to
/// 1: it knows the old forms of many characters, and none of the simplified.
[[nodiscard]] double voteForTraditional(const ScriptEvidence& simplified, const ScriptEvidence& traditional,
                                        const ScriptEvidence& japanese);

} // namespace tessary::recognizer
