#include "workers/recognizer/ScriptEvidence.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>

namespace tessary::recognizer {
namespace {

constexpr double kLeastConfidence = 70; // what is worse counts as this

UScriptCode scriptCodeOf(const ReadSymbol& symbol)
{
    const auto points = symbol.text.toUcs4();
    UErrorCode status = U_ZERO_ERROR;
    return points.isEmpty() ? USCRIPT_COMMON : uscript_getScript(UChar32(points.first()), &status);
}

/// How many of one reading's characters are not in another, and which of those a third one has.
struct Ballot {
    int differences = 0;
    int votes = 0;

    void count(const QString& one, const QString& other, const QString& judge)
    {
        for (const QChar character : one) {
            if (other.contains(character))
                continue;
            ++differences;
            votes += judge.contains(character) ? 1 : 0;
        }
    }
};

} // namespace

void ScriptEvidence::add(const LineReading& reading)
{
    m_hanTexts.append(QString());
    for (const ReadSymbol& symbol : reading) {
        const UScriptCode code = scriptCodeOf(symbol);
        const double confidence = std::max(symbol.confidence, kLeastConfidence);
        ++m_symbols;
        m_sum += confidence;
        if (code == USCRIPT_HAN) {
            ++m_han;
            m_hanSum += confidence;
            m_hanTexts.last() += symbol.text;
        }
        m_kana += code == USCRIPT_HIRAGANA || code == USCRIPT_KATAKANA ? 1 : 0;
        m_letters += !symbol.text.isEmpty() && symbol.text.at(0).isPunct() ? 0 : 1;
    }
}

bool ScriptEvidence::isLatin() const
{
    constexpr int kFew = 12; // one of so many letters may be misread
    return (m_han + m_kana) * kFew <= m_letters;
}

bool ScriptEvidence::hasKana() const
{
    constexpr int kEnough = 7; // one of so many
    return m_kana >= 2 && m_kana * kEnough >= m_han + m_kana;
}

double ScriptEvidence::hanConfidence() const
{
    return m_han == 0 ? 0 : m_hanSum / m_han;
}

double ScriptEvidence::confidence() const
{
    return m_symbols == 0 ? 0 : m_sum / m_symbols;
}

std::optional<double> leadOfTraditional(const ScriptEvidence& simplified, const ScriptEvidence& traditional)
{
    if (simplified.hanConfidence() <= 0 || traditional.hanConfidence() <= 0)
        return std::nullopt;
    return traditional.hanConfidence() - simplified.hanConfidence();
}

double voteForTraditional(const ScriptEvidence& simplified, const ScriptEvidence& traditional,
                          const ScriptEvidence& japanese)
{
    constexpr int kDoubt = 10; // as many differences would have had no votes
    Ballot old;
    Ballot simple;
    const qsizetype lines =
        std::min({simplified.han().size(), traditional.han().size(), japanese.han().size()});
    for (qsizetype i = 0; i < lines; ++i) {
        old.count(traditional.han().at(i), simplified.han().at(i), japanese.han().at(i));
        simple.count(simplified.han().at(i), traditional.han().at(i), japanese.han().at(i));
    }
    return double(old.votes - simple.votes) / (old.differences + kDoubt);
}

} // namespace tessary::recognizer
