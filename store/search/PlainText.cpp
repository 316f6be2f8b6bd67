#include "store/search/PlainText.h"

#include <cstring>

namespace tessary {
namespace {

constexpr quint64 kNoAscii = 0x8080808080808080U;

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

/// How many bytes the plain character at the beginning has, which is no ASCII; 0 for any other.
qsizetype plainCharacter(const unsigned char* at, qsizetype left)
{
    constexpr unsigned char kMicroSign = 0xB5;        // becomes a Greek letter
    constexpr unsigned char kFullWidthLetterA = 0xA1; // after EF BC; the letters become small ones
    const bool isOfTwo = left >= 2 && isContinuation(at[1]);
    const bool isOfThree = left >= 3 && isOfTwo && isContinuation(at[2]);
    switch (at[0]) {
    case 0xC2: // signs of Latin-1
        return isOfTwo && at[1] != kMicroSign ? 2 : 0;
    case 0xE2: // dashes, quotation marks and the like
        return isOfThree && at[1] == 0x80 ? 3 : 0;
    case 0xEF: // punctuation of full width
        return isOfThree && at[1] == 0xBC && at[2] < kFullWidthLetterA ? 3 : 0;
    case 0xF0: // emoji
        return left >= 4 && at[1] == 0x9F && isOfThree && isContinuation(at[3]) ? 4 : 0;
    default: // from U+3000 to U+9FFF
        return at[0] >= 0xE3 && at[0] <= 0xE9 && isOfThree ? 3 : 0;
    }
}

} // namespace

bool isPlainText(QByteArrayView text)
{
    const auto* at = reinterpret_cast<const unsigned char*>(text.data());
    const auto* const end = at + text.size();
    while (at != end) {
        quint64 word = 0;
        if (static_cast<size_t>(end - at) >= sizeof word) {
            std::memcpy(&word, at, sizeof word);
            if ((word & kNoAscii) == 0) {
                at += sizeof word;
                continue;
            }
        }
        const qsizetype size = *at < 0x80 ? 1 : plainCharacter(at, end - at);
        if (size == 0)
            return false;
        at += size;
    }
    return true;
}

} // namespace tessary
