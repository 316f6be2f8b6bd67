#pragma once

#include "workers/recognizer/LineReadings.h"
#include "workers/recognizer/ScriptEvidence.h"

namespace tessary::recognizer {

/// Finds out what script the lines of a picture are in, by reading the longest of them by several models.
class ScriptChoice {
public:
    /// @param scripts that have models, the most likely first.
    ScriptChoice(LineReadings& readings, QList<Script> scripts)
        : m_readings(readings),
          m_scripts(std::move(scripts))
    {
    }

    /// Whether the first script's model makes Latin of the longest lines, and Latin is among the scripts.
    [[nodiscard]] bool looksLatin();
    /// The best script besides Latin for these lines (indices, the longest first); at least one such script
    /// is given.
    [[nodiscard]] Script wideScript(const std::vector<size_t>& lines);

private:
    [[nodiscard]] ScriptEvidence evidence(const std::vector<size_t>& lines, Script script, double length);
    [[nodiscard]] bool isJapanese(const std::vector<size_t>& lines);
    [[nodiscard]] Script chineseScript(const std::vector<size_t>& lines, Script otherwise);

    LineReadings& m_readings;
    QList<Script> m_scripts;
};

} // namespace tessary::recognizer
