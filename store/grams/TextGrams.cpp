#include "store/grams/TextGrams.h"

namespace tessary::TextGrams {
namespace {

constexpr unsigned kBitsOfByte = 8;
constexpr unsigned char kAsciiEnd = 0x80;

/// A character's bytes, the first one lowest. Zero stands for a border.
struct Character {
    quint32 bytes = 0;
    unsigned length = 0;

    [[nodiscard]] bool isBorder() const { return length == 0; }
    [[nodiscard]] bool isAscii() const { return length == 1 && bytes < kAsciiEnd; }
};

bool continues(unsigned char byte)
{
    return (byte & 0xC0U) == kAsciiEnd;
}

/// Bytes of a character that begins so, 0 for what begins none.
unsigned lengthAfter(unsigned char first)
{
    constexpr unsigned char kTwo = 0xC0;
    constexpr unsigned char kThree = 0xE0;
    constexpr unsigned char kFour = 0xF0;
    constexpr unsigned char kNone = 0xF8;
    if (first == 0 || first >= kNone)
        return 0;
    return first < kTwo ? 1 : first < kThree ? 2 : first < kFour ? 3 : 4;
}

unsigned char folded(unsigned char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte | 0x20U) : byte;
}

/// The characters of a text one after the other, then borders for ever.
class Characters {
public:
    explicit Characters(QByteArrayView text) : m_at(text.begin()), m_end(text.end()) {}

    [[nodiscard]] bool isAtEnd() const { return m_at == m_end; }
    Character next()
    {
        if (isAtEnd())
            return {};
        const auto first = static_cast<unsigned char>(*m_at++);
        const unsigned wanted = lengthAfter(first);
        if (wanted == 0)
            return {};
        Character character{folded(first), 1};
        while (character.length < wanted && !isAtEnd() && continues(static_cast<unsigned char>(*m_at))) {
            character.bytes |= quint32{static_cast<unsigned char>(*m_at++)}
                               << (kBitsOfByte * character.length);
            ++character.length;
        }
        return character;
    }

private:
    const char* m_at;
    const char* m_end;
};

/// The gram that begins with the first of three characters, which is none.
struct Found {
    Gram gram = 0;
    bool isCut = false; ///< A border came before it was whole.
};

Found gramAt(const Character& first, const Character& second, const Character& third)
{
    if (second.isBorder())
        return {first.bytes, true};
    const Gram two = first.bytes | Gram{second.bytes} << (kBitsOfByte * first.length);
    if (!first.isAscii() || !second.isAscii())
        return {two, false};
    if (third.isBorder())
        return {two, true};
    if (!third.isAscii())
        return {two, false};
    return {two | Gram{third.bytes} << (2 * kBitsOfByte), false};
}

template <typename Use>
void forEachGram(QByteArrayView text, const Use& use)
{
    Characters characters(text);
    Character first = characters.next();
    Character second = characters.next();
    for (bool isOver = false; !isOver;) {
        const Character third = characters.next();
        if (!first.isBorder())
            use(gramAt(first, second, third));
        isOver = second.isBorder() && third.isBorder() && characters.isAtEnd();
        first = second;
        second = third;
    }
}

} // namespace

void append(QByteArrayView text, std::vector<Gram>& grams)
{
    forEachGram(text, [&grams](const Found& found) { grams.push_back(found.gram); });
}

Wanted wantedBy(QByteArrayView piece)
{
    Wanted wanted;
    forEachGram(piece, [&wanted](const Found& found) {
        if (!found.isCut)
            wanted.grams.append(GramBytes(found.gram).toByteArray());
        else if (wanted.grams.isEmpty() && wanted.beginningOfGram.isEmpty())
            wanted.beginningOfGram = GramBytes(found.gram).toByteArray();
    });
    return wanted;
}

} // namespace tessary::TextGrams
