#pragma once

#include "tests/unit/store/differential/Dice.h"

#include <QString>

namespace tessary::testing {

/// Texts of a small vocabulary, so that they have much in common, with all that a search may stumble over:
/// scripts, accents, widths, quotes, wild cards, control characters and half surrogate pairs.
class GeneratedTexts {
public:
    /// @param hasNul whether texts may hold U+0000, of which SQLite's own LIKE sees nothing that follows.
    GeneratedTexts(Dice& dice, bool hasNul) : m_dice(dice), m_hasNul(hasNul) {}

    /// Of 1 to so many words.
    [[nodiscard]] QString text(qsizetype mostWords);
    [[nodiscard]] QString word();
    /// A character that means something to a query, or to SQL, or to neither.
    [[nodiscard]] QString oddity();

private:
    Dice& m_dice;
    bool m_hasNul;
};

} // namespace tessary::testing
