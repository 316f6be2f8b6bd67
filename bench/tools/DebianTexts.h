#pragma once

#include <QStringList>

namespace tessary::bench {

/// Real texts: what the documentation and the programs of Debian packages say (group `bench` of
/// packages.list). Paragraphs are in the order of their books, and none is there twice. The same packages
/// give the same texts.
struct DebianTexts {
    QStringList chinese; ///< Simplified and traditional.
    QStringList japanese;
    QStringList english;
    QStringList code;     ///< Several lines each.
    QStringList messages; ///< Of programs, in Chinese and Japanese; short.
    QStringList policy;   ///< English, of one book that none of the other lists holds anything of.

    /// Ends the program with a word about it when the packages are not installed.
    [[nodiscard]] static DebianTexts installed();
};

} // namespace tessary::bench
