#include "store/HanSyllables.h"

#include "store/LatinTransform.h"

#include <unicode/uscript.h>

#include <algorithm>

namespace tessary {
namespace {

/// A superset of the Han characters that is quick to test.
constexpr bool mayBeHan(char32_t character)
{
    return (character >= 0x2E80 && character <= 0x3007) || (character >= 0x3021 && character <= 0x303B) ||
           (character >= 0x3400 && character <= 0x9FFF) || (character >= 0xF900 && character <= 0xFAFF) ||
           (character >= 0x16FE0 && character <= 0x16FFF) || (character >= 0x20000 && character <= 0x3FFFF);
}

bool isHan(char32_t character)
{
    UErrorCode status = U_ZERO_ERROR;
    return uscript_getScript(static_cast<UChar32>(character), &status) == USCRIPT_HAN;
}

} // namespace

QLatin1StringView HanSyllables::of(char32_t character, LatinTransform& latin)
{
    if (!mayBeHan(character))
        return {};
    const char32_t number = character / kBlockSize;
    const Block* block = nullptr;
    if (number < kPlaneBlocks) {
        std::unique_ptr<Block>& kept = m_basic[number];
        if (!kept)
            kept = fill(number * kBlockSize, latin);
        block = kept.get();
    } else {
        std::shared_ptr<Block>& kept = m_rare[number];
        if (!kept)
            kept = fill(number * kBlockSize, latin);
        block = kept.get();
    }
    const Syllable& syllable = (*block)[character % kBlockSize];
    return QLatin1StringView(syllable.letters.data(), syllable.length);
}

std::unique_ptr<HanSyllables::Block> HanSyllables::fill(char32_t first, LatinTransform& latin)
{
    auto block = std::make_unique<Block>();
    for (char32_t offset = 0; offset < kBlockSize; ++offset) {
        const char32_t character = first + offset;
        if (!isHan(character))
            continue;
        const QString reading = latin.romanised(QString::fromUcs4(&character, 1));
        const bool isSyllable =
            !reading.isEmpty() && reading.size() <= static_cast<qsizetype>(kLongestSyllable) &&
            std::all_of(reading.cbegin(), reading.cend(), [](QChar c) { return c >= u'a' && c <= u'z'; });
        if (!isSyllable)
            continue;
        Syllable& syllable = (*block)[offset];
        syllable.length = static_cast<quint8>(reading.size());
        std::transform(reading.cbegin(), reading.cend(), syllable.letters.begin(),
                       [](QChar c) { return static_cast<char>(c.unicode()); });
    }
    return block;
}

} // namespace tessary
