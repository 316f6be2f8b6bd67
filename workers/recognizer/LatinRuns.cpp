#include "workers/recognizer/LatinRuns.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace tessary::recognizer {
namespace {

constexpr int kShortestWord = 2;    // letters
constexpr double kMostDiffer = 0.4; // of a word's letters may be read otherwise
constexpr double kDoubt = 4;        // what the model of Latin may be less sure and still be right

char32_t characterOf(const ReadSymbol& symbol)
{
    const auto points = symbol.text.toUcs4();
    return points.isEmpty() ? 0 : points.first();
}

bool isLetter(const ReadSymbol& symbol)
{
    constexpr char32_t kLastOfLatin = 0x24F;
    const char32_t character = characterOf(symbol);
    return character <= kLastOfLatin && u_isalnum(UChar32(character)) != 0;
}

struct Run {
    qsizetype first = 0;
    qsizetype end = 0;
};

/// Words of Latin letters and digits, with at least two letters.
std::vector<Run> runsOf(const LineReading& reading)
{
    std::vector<Run> runs;
    for (qsizetype i = 0; i < reading.size(); ++i) {
        Run run{i, i};
        int letters = 0;
        for (; run.end < reading.size() && isLetter(reading.at(run.end)); ++run.end) {
            if (run.end > i && reading.at(run.end).blankBefore)
                break;
            letters += u_isalpha(UChar32(characterOf(reading.at(run.end)))) ? 1 : 0;
        }
        if (letters >= kShortestWord)
            runs.push_back(run);
        i = std::max(i, run.end - 1);
    }
    return runs;
}

QString lettersOf(const LineReading& reading)
{
    QString letters;
    for (const ReadSymbol& symbol : reading)
        letters += symbol.text;
    return letters;
}

/// How many letters have to be put in, left out or replaced.
int differences(const QString& one, const QString& other)
{
    std::vector<int> row(size_t(other.size()) + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = int(j);
    for (const QChar character : one) {
        int diagonal = row[0]++;
        for (size_t j = 1; j < row.size(); ++j) {
            const bool same = character == other.at(qsizetype(j) - 1);
            const int replaced = diagonal + (same ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

/// The word of the reading that stands where the run does.
LineReading wordAt(const LineReading& latin, int left, int right)
{
    const std::vector<Run> words = runsOf(latin);
    const auto overlap = [&](const Run& run) {
        return std::min(right, latin.at(run.end - 1).right) - std::max(left, latin.at(run.first).left);
    };
    const auto best = std::max_element(words.begin(), words.end(), [&](const Run& one, const Run& other) {
        return overlap(one) < overlap(other);
    });
    if (best == words.end() || overlap(*best) <= 0)
        return {};
    return latin.mid(best->first, best->end - best->first);
}

bool isBetter(const LineReading& latin, const LineReading& wide)
{
    if (latin.isEmpty())
        return false;
    const QString here = lettersOf(latin).toCaseFolded();
    const QString there = lettersOf(wide).toCaseFolded();
    // A word that begins and ends otherwise may have lost a piece.
    const bool sameEnds = here.front() == there.front() && here.back() == there.back();
    if (!sameEnds && (here.size() != there.size() || meanConfidence(latin) <= meanConfidence(wide)))
        return false;
    return meanConfidence(latin) + kDoubt >= meanConfidence(wide) &&
           differences(here, there) <= int(kMostDiffer * double(there.size()));
}

} // namespace

bool hasLatinRun(const LineReading& wide)
{
    return !runsOf(wide).empty();
}

LineReading withLatinRuns(const LineReading& wide, const LineReading& latin)
{
    LineReading result;
    qsizetype done = 0;
    for (const Run& run : runsOf(wide)) {
        result += wide.mid(done, run.first - done);
        const LineReading before = wide.mid(run.first, run.end - run.first);
        LineReading word = wordAt(latin, before.first().left, before.last().right);
        if (isBetter(word, before)) {
            // What is in front of the word is as the other model sees it.
            word.first().gapBefore = before.first().gapBefore;
            word.first().blankBefore = before.first().blankBefore;
            result += word;
        } else {
            result += before;
        }
        done = run.end;
    }
    return result + wide.mid(done);
}

} // namespace tessary::recognizer
