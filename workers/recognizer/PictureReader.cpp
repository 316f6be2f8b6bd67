#include "workers/recognizer/PictureReader.h"

#include "workers/recognizer/HanSpacing.h"
#include "workers/recognizer/LatinRuns.h"
#include "workers/recognizer/LineFinder.h"
#include "workers/recognizer/Plausibility.h"
#include "workers/recognizer/ReadingOrder.h"
#include "workers/recognizer/RecognizerFailure.h"
#include "workers/recognizer/RowJoining.h"
#include "workers/recognizer/ScriptChoice.h"

#include <algorithm>
#include <chrono>
#include <unicode/uchar.h>

namespace tessary::recognizer {
namespace {

/// Of a screen full of text the longest lines are read in this time, rather than none before the deadline.
constexpr std::chrono::seconds kMostTime{13};
constexpr double kSureOfLatin = 97;
/// What the model of another script may be less sure of Latin than the Latin one and still be worse.
constexpr double kLatinLead = 3;
/// Characters that make Han of a line that looks like Latin.
constexpr int kFewestOfHan = 2;
/// Strokes above each other: Latin has fewer at its densest, Han more almost always.
constexpr double kDenseAsHan = 1.9;

bool isLatin(const LineReading& reading)
{
    ScriptEvidence evidence;
    evidence.add(reading);
    return evidence.isLatin();
}

/// How many characters as wide as high the engine is as good as sure of.
int sureWideCharacters(const LineReading& reading)
{
    constexpr double kSure = 93;
    return int(std::count_if(reading.cbegin(), reading.cend(), [](const ReadSymbol& symbol) {
        const auto points = symbol.text.toUcs4();
        return symbol.confidence >= kSure && !points.isEmpty() && u_isalpha(UChar32(points.first())) &&
               isWide(points.first());
    }));
}

/// The first script with a model of its own for Han or kana, and Latin, in their order.
QList<Script> firstAndLatin(QList<Script> scripts)
{
    bool found = false;
    scripts.removeIf([&](Script script) {
        const bool wide = script != Script::Latin;
        return wide && std::exchange(found, true);
    });
    return scripts;
}

/// Reads the lines of one picture, each by the script that fits it.
class LineByLine {
public:
    LineByLine(LineReadings& readings, QList<Script> scripts, Effort effort)
        : m_readings(readings),
          m_scripts(std::move(scripts)),
          m_effort(effort),
          m_choice(readings, m_scripts)
    {
    }

    [[nodiscard]] QList<LineReading> read()
    {
        const bool onlyLatin = m_scripts == QList<Script>{Script::Latin};
        m_latinFirst = m_choice.looksLatin();
        if (!onlyLatin)
            m_wide = chooseWide();
        QList<LineReading> result;
        result.resize(qsizetype(m_readings.count()));
        for (const size_t line : m_readings.longestFirst()) {
            if (std::chrono::steady_clock::now() >= m_end)
                break;
            result[qsizetype(line)] = onlyLatin ? m_readings.read(line, Script::Latin) : readLine(line);
        }
        return result;
    }

private:
    /// The lines that are not Latin for sure.
    [[nodiscard]] std::vector<size_t> wideLines()
    {
        std::vector<size_t> lines = m_readings.longestFirst();
        if (m_latinFirst)
            std::erase_if(lines, [this](size_t line) {
                return std::chrono::steady_clock::now() >= m_end || isSurelyLatin(line);
            });
        return lines;
    }
    /// The model of Latin is as sure of what it makes of Han, so the strokes have a say too.
    [[nodiscard]] bool isSurelyLatin(size_t line)
    {
        return m_latinFirst && m_readings.density(line) < kDenseAsHan &&
               meanConfidence(m_readings.read(line, Script::Latin)) >= kSureOfLatin;
    }
    [[nodiscard]] Script chooseWide() { return m_choice.wideScript(wideLines()); }
    [[nodiscard]] LineReading readLine(size_t line)
    {
        const bool hasLatin = m_scripts.contains(Script::Latin);
        if (isSurelyLatin(line))
            return m_readings.read(line, Script::Latin);
        const LineReading& wide = m_readings.read(line, m_wide);
        if (!hasLatin)
            return wide;
        const bool hasHan = !isLatin(wide) || sureWideCharacters(wide) >= kFewestOfHan;
        if (hasHan && (m_effort == Effort::Fast || !hasLatinRun(wide)))
            return wide;
        const LineReading& latin = m_readings.read(line, Script::Latin);
        if (hasHan)
            return withLatinRuns(wide, latin);
        return meanConfidence(latin) + kLatinLead >= meanConfidence(wide) ? latin : wide;
    }

    LineReadings& m_readings;
    QList<Script> m_scripts;
    Effort m_effort;
    ScriptChoice m_choice;
    bool m_latinFirst = false;
    Script m_wide = Script::Simplified;
    const std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + kMostTime;
};

} // namespace

QList<Script> PictureReader::installed(const QList<Script>& scripts)
{
    QList<Script> present;
    QStringList missing;
    for (const Script script : scripts) {
        if (m_engines.has(modelOf(script)))
            present.append(script);
        else
            missing.append(packageOf(script));
    }
    if (present.isEmpty() || present.first() != scripts.first())
        throw RecognizerFailure(RecognizerFailure::Case::ModelsMissing, missing.join(QLatin1Char(' ')));
    return present;
}

QList<ReadLine> PictureReader::read(const PictureView& picture, const QList<Script>& scripts, Effort effort)
{
    const QList<Script> present = installed(effort == Effort::Fast ? firstAndLatin(scripts) : scripts);
    std::vector<TextLine> lines = findLines(picture);
    sortForReading(lines);
    LineReadings readings(picture, std::move(lines), m_engines);
    QList<ReadLine> result;
    const QList<LineReading> all = LineByLine(readings, present, effort).read();
    for (qsizetype i = 0; i < all.size(); ++i) {
        const QString text = textOf(all.at(i));
        if (!text.trimmed().isEmpty() && isPlausible(all.at(i), readings.line(size_t(i)).maybeIcon))
            result.append({readings.line(size_t(i)).box, text, meanConfidence(all.at(i)) / 100});
    }
    return joinRows(result);
}

} // namespace tessary::recognizer
