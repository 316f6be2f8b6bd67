#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace tessary {

/// A pattern of SQL's LIKE over UTF-8: `%` is any run of characters, `_` any one character, ASCII letters
/// match in either case, and everything else, a NUL too, is itself.
class LikePattern {
public:
    explicit LikePattern(QByteArrayView pattern);

    /// In a time proportional to the text's length where the pattern is text between two `%`.
    [[nodiscard]] bool matches(QByteArrayView text) const;

private:
    [[nodiscard]] bool hasNeedle(QByteArrayView text) const;
    [[nodiscard]] bool contains(QByteArrayView text) const;
    [[nodiscard]] bool containsLong(QByteArrayView text) const;
    [[nodiscard]] bool matchesGeneral(QByteArrayView text) const;

    QByteArray m_pattern;    ///< ASCII letters in lower case.
    QByteArray m_needle;     ///< The longest piece without `%` and `_`.
    bool m_isNeedle = false; ///< Whether the pattern is the needle between two `%`.
    qsizetype m_rarest = 0;  ///< Index in the needle of the byte that texts hold most seldom.
};

} // namespace tessary
