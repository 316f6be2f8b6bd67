#pragma once

#include <QString>

namespace tessary::bench {

/// Whether forms of a character that differ in width only are the same to the scorer.
enum class Widths {
    Alike,    ///< NFKC: a full-width comma is a comma, an ellipsis is three dots.
    ToldApart ///< NFC.
};

/// How far a reading is from the text that was drawn.
struct CharacterErrors {
    qsizetype distance = 0; ///< Characters to insert, delete or replace, over the whole text in its order.
    qsizetype length = 0;   ///< Characters of the drawn text.

    /// 0 is perfect; above 1 when more was read than there is. Without drawn text each character read is one
    /// error of one character.
    [[nodiscard]] double rate() const;
    CharacterErrors& operator+=(const CharacterErrors& other);
    friend bool operator==(const CharacterErrors&, const CharacterErrors&) = default;
};

/// The text as it is compared: normalised (see Widths), each run of blanks and line breaks one blank, none at
/// the ends. Blanks stay where they are between Han characters, so that one too many is an error.
[[nodiscard]] QString normalized(const QString& text, Widths widths);

/// Counts code points, after normalising both.
[[nodiscard]] CharacterErrors characterErrors(const QString& drawn, const QString& read,
                                              Widths widths = Widths::Alike);

} // namespace tessary::bench
