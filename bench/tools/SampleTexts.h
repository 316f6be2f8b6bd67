#pragma once

#include <QString>
#include <QStringList>

#include <random>

namespace tessary::bench {

/// Texts such as people copy: Chinese, English, the two mixed, and code, of 10 to 2000 characters, short
/// ones more often than long ones. The same seed gives the same texts on machines with the same licences
/// and documents installed.
class SampleTexts {
public:
    explicit SampleTexts(quint64 seed);

    /// The next text. The number in its first line makes it unlike all others.
    [[nodiscard]] QString next();
    /// Text of one kind, of about that many characters.
    [[nodiscard]] QString chinese(qsizetype length);
    [[nodiscard]] QString english(qsizetype length);
    [[nodiscard]] QString code(qsizetype length);
    [[nodiscard]] QString mixed(qsizetype length);
    /// 0 to `limit` - 1.
    [[nodiscard]] qsizetype below(qsizetype limit);

private:
    std::mt19937_64 m_random;
    QStringList m_words; // of English, in the order in which they were written
    quint64 m_number = 0;
};

} // namespace tessary::bench
