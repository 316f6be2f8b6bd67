#include "workers/recognizer/Plausibility.h"

namespace tessary::recognizer {
namespace {

constexpr double kLeastConfidence = 70;
constexpr double kLeastOfOne = 98.5; ///< Of a single character.
constexpr double kLeastOfFew = 94;
constexpr double kLeastWithSigns = 98;

/// Letters, Han, kana and digits.
qsizetype letterCount(const LineReading& reading)
{
    return std::count_if(reading.begin(), reading.end(), [](const ReadSymbol& symbol) {
        return !symbol.text.isEmpty() &&
               (symbol.text.at(0).isLetterOrNumber() || symbol.text.at(0).isSurrogate());
    });
}

} // namespace

bool isPlausible(const LineReading& reading, bool maybeIcon)
{
    const double confidence = meanConfidence(reading);
    if (!maybeIcon)
        return confidence >= kLeastConfidence;
    const qsizetype letters = letterCount(reading);
    if (reading.size() == 1)
        return letters == 1 && confidence >= kLeastOfOne;
    const double least = letters == reading.size() ? kLeastOfFew : kLeastWithSigns;
    return 2 * letters >= reading.size() && confidence >= least;
}

} // namespace tessary::recognizer
