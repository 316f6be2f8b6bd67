#include "workers/recognizer/ScriptChoice.h"

namespace tessary::recognizer {
namespace {

// How much of the text is read to find out, in square characters.
constexpr double kLookLength = 16;
constexpr double kChineseLength = 45;

} // namespace

ScriptEvidence ScriptChoice::evidence(const std::vector<size_t>& lines, Script script, double length)
{
    ScriptEvidence found;
    double done = 0;
    for (const size_t line : lines) {
        if (done >= length)
            break;
        found.add(m_readings.read(line, script));
        done += m_readings.lengthOf(line);
    }
    return found;
}

bool ScriptChoice::looksLatin()
{
    if (!m_scripts.contains(Script::Latin))
        return false;
    return m_scripts.first() == Script::Latin ||
           evidence(m_readings.longestFirst(), m_scripts.first(), kLookLength).isLatin();
}

bool ScriptChoice::isJapanese(const std::vector<size_t>& lines)
{
    if (!m_scripts.contains(Script::Japanese))
        return false;
    const ScriptEvidence japanese = evidence(lines, Script::Japanese, kLookLength);
    if (!japanese.hasKana())
        return false;
    for (const Script other : {Script::Simplified, Script::Traditional})
        if (m_scripts.contains(other))
            return japanese.confidence() >= evidence(lines, other, kLookLength).confidence();
    return true;
}

Script ScriptChoice::wideScript(const std::vector<size_t>& lines)
{
    QList<Script> wide = m_scripts;
    wide.removeAll(Script::Latin);
    if (wide.size() == 1)
        return wide.first();
    if (isJapanese(lines))
        return Script::Japanese;
    wide.removeAll(Script::Japanese);
    if (wide.size() == 1)
        return wide.first();
    return chineseScript(lines, wide.first());
}

Script ScriptChoice::chineseScript(const std::vector<size_t>& lines, Script otherwise)
{
    constexpr double kLead = 0.1; // without a vote
    constexpr double kNoVoteAbove = 0.75;
    constexpr double kNoVoteBelow = -0.6;
    constexpr double kVoteWeight = 5;
    const ScriptEvidence simplified = evidence(lines, Script::Simplified, kChineseLength);
    const ScriptEvidence traditional = evidence(lines, Script::Traditional, kChineseLength);
    const std::optional<double> lead = leadOfTraditional(simplified, traditional);
    if (!lead)
        return otherwise;
    bool isTraditional = *lead >= kLead;
    if (m_scripts.contains(Script::Japanese) && *lead > kNoVoteBelow && *lead < kNoVoteAbove) {
        const ScriptEvidence japanese = evidence(lines, Script::Japanese, kChineseLength);
        isTraditional =
            *lead + kVoteWeight * voteForTraditional(simplified, traditional, japanese) >= kNoVoteAbove;
    }
    return isTraditional ? Script::Traditional : Script::Simplified;
}

} // namespace tessary::recognizer
