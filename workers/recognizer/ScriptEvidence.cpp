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

} // namespace

void ScriptEvidence::add(const LineReading& reading)
{
    for (const ReadSymbol& symbol : reading) {
        const UScriptCode code = scriptCodeOf(symbol);
        const double confidence = std::max(symbol.confidence, kLeastConfidence);
        ++m_symbols;
        m_sum += confidence;
        if (code == USCRIPT_HAN) {
            ++m_han;
            m_hanSum += confidence;
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

Script chineseScript(const ScriptEvidence& simplified, const ScriptEvidence& traditional, Script otherwise)
{
    constexpr double kSurer = 0.1;
    if (simplified.hanConfidence() <= 0 || traditional.hanConfidence() <= 0)
        return otherwise;
    return traditional.hanConfidence() >= simplified.hanConfidence() + kSurer ? Script::Traditional
                                                                              : Script::Simplified;
}

} // namespace tessary::recognizer
