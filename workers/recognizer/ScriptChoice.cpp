#include "workers/recognizer/ScriptChoice.h"

namespace tessary::recognizer {
namespace {

// How much of the text is read to find out, in square characters.
constexpr double kLookLength = 16;
constexpr double kChineseLength = 50;

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
    return chineseScript(evidence(lines, Script::Simplified, kChineseLength),
                         evidence(lines, Script::Traditional, kChineseLength), wide.first());
}

} // namespace tessary::recognizer
