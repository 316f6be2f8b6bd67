#pragma once

#include "store/ScreenshotRecord.h"
#include "tests/unit/store/differential/GeneratedTexts.h"

namespace tessary::testing {

/// When the lists of generated libraries are looked at; items lie on both sides of all that a list may be
/// narrowed to by then.
inline constexpr Date kGeneratedNow{1'715'950'000};

/// Items with every kind of value that a column can hold, many of them with equal times and sizes.
class LibraryGenerator {
public:
    LibraryGenerator(Dice& dice, GeneratedTexts& texts) : m_dice(dice), m_texts(texts) {}

    [[nodiscard]] ScreenshotRecord next();
    [[nodiscard]] QStringList tags();
    /// Empty most of the time.
    [[nodiscard]] QString note();
    [[nodiscard]] Date time();

private:
    void fillTexts(ScreenshotRecord& record);
    void fillNumbers(ScreenshotRecord& record);

    Dice& m_dice;
    GeneratedTexts& m_texts;
    qint64 m_number = 0;
};

} // namespace tessary::testing
