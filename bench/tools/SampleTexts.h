#pragma once

#include "bench/tools/DebianTexts.h"

#include <QSet>
#include <QString>

#include <random>

namespace tessary::bench {

/// Texts such as people copy, cut out of real ones: Chinese, English, Japanese, mixed, code, and messages of
/// programs, of 10 to 2000 characters, short ones more often than long ones. The same seed gives the same
/// texts on machines with the same documentation installed.
class SampleTexts {
public:
    /// Where a text comes from.
    enum class Source {
        Usual,
        Former, ///< A book that is never met otherwise, as of a work that is over.
    };

    explicit SampleTexts(quint64 seed);

    /// The next text, unlike all others so far.
    [[nodiscard]] QString next(Source source = Source::Usual);
    /// Text of one kind, of about that many characters.
    [[nodiscard]] QString chinese(qsizetype length);
    [[nodiscard]] QString japanese(qsizetype length);
    [[nodiscard]] QString english(qsizetype length);
    [[nodiscard]] QString code(qsizetype length);
    [[nodiscard]] QString mixed(qsizetype length);
    [[nodiscard]] QString message();
    /// 0 to `limit` - 1.
    [[nodiscard]] qsizetype below(qsizetype limit);

private:
    /// What stands in the paragraphs from somewhere on, ending where it makes sense or within a sentence.
    [[nodiscard]] QString passage(const QStringList& paragraphs, qsizetype length);
    [[nodiscard]] qsizetype start(const QString& paragraph);
    [[nodiscard]] QString ofAnyKind(qsizetype length);

    std::mt19937_64 m_random;
    DebianTexts m_texts;
    QSet<size_t> m_used; // hashes of the texts so far
    quint64 m_number = 0;
};

} // namespace tessary::bench
