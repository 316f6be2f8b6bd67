#pragma once

#include <QStringView>

#include <initializer_list>
#include <optional>

namespace tessary {

/// Reads a text from a position on. Every step looks at a bounded number of characters, so that looking
/// everywhere in a long text takes time in proportion to it. Full-width digits and colons read as ASCII.
class TextScanner {
public:
    explicit TextScanner(QStringView text, qsizetype position = 0) : m_text(text), m_position(position) {}

    [[nodiscard]] qsizetype position() const { return m_position; }
    void moveTo(qsizetype position) { m_position = position; }
    void advance(qsizetype characters) { m_position += characters; }
    [[nodiscard]] TextScanner at(qsizetype position) const { return TextScanner(m_text, position); }
    /// The character so many places ahead, or back; a null character outside the text.
    [[nodiscard]] QChar peek(qsizetype ahead = 0) const;

    /// Passes over blanks, three at most; a line break is none. @returns whether there were any.
    bool skipBlanks();
    bool take(QChar character);
    /// Case matters.
    bool take(QStringView literal);
    /// Whole words, in any case of the ASCII letters. @returns whether it was one.
    bool takeWord(QLatin1String word);
    /// The index of the first literal that stands here.
    std::optional<int> takeOneOf(std::initializer_list<QStringView> literals);
    /// A number of that many digits, not followed by a further one.
    std::optional<int> takeNumber(int fewest, int most);

    /// Whether a number can begin here: no digit, letter or sign that would make it part of something else
    /// stands before.
    [[nodiscard]] bool beginsNumber() const;
    /// Whether one can end here.
    [[nodiscard]] bool endsNumber() const;
    /// Whether the ASCII word that begins here is not the rest of a longer one.
    [[nodiscard]] bool beginsWord() const;
    [[nodiscard]] bool endsWord() const;
    /// The ASCII letters just before this position and its blanks, lower case; at most 12.
    [[nodiscard]] QString wordBefore() const;

    /// A digit 0 to 9, wide or not; nothing else.
    [[nodiscard]] static std::optional<int> digit(QChar character);
    [[nodiscard]] static bool isAsciiLetter(QChar character);

private:
    [[nodiscard]] static QChar narrow(QChar character);

    QStringView m_text;
    qsizetype m_position;
};

} // namespace tessary
