#pragma once

#include "store/sqlite/SQLiteConnection.h"

#include <QString>

namespace tessary::bench {

/// Words to look for whose frequency fits what they stand for, picked out of a library's texts. "Rare" ones
/// are in 2 to 40 texts, or in one where there are none such.
struct SampleWords {
    QString common;        ///< Of three letters or more, in the most texts of all.
    QString secondCommon;  ///< The next one.
    QString rare;          ///< Of five letters or more.
    QString onlyOld;       ///< In the oldest part of the library and nowhere else.
    QString firstOfPair;   ///< With the next, the two words that stand side by side most often
    QString secondOfPair;  ///< and are both of three letters or more.
    QString commonLetters; ///< Two ASCII letters.
    QString rareLetters;
    QString commonLetter;
    QString rareLetter;
    QString commonHan; ///< Two Han characters.
    QString secondCommonHan;
    QString rareHan;
    QString commonHanStart; ///< Two Han characters with which texts begin.
    QString rareHanStart;
    QString commonCharacter; ///< One Han character.
    QString rareCharacter;

    /// Reads a part of the texts to find candidates, and all of them to count these.
    [[nodiscard]] static SampleWords pick(SQLiteConnection& library);
};

} // namespace tessary::bench
