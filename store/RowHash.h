#pragma once

#include <QtGlobal>

#include <array>
#include <cstring>

namespace tessary {

/// A 128-bit hash of the values of one row, one after the other. Quick rather than safe from somebody who
/// looks for two rows with the same hash; without such intent there are none.
class RowHash {
public:
    enum class Kind : quint64 { Null = 1, Integer, Real, Bytes };

    void addNull() { mix(0, static_cast<quint64>(Kind::Null)); }
    /// @param bits of the number, as they lie in memory.
    void addNumber(Kind kind, quint64 bits) { mix(bits, static_cast<quint64>(kind)); }
    /// Values that follow each other are told apart by their lengths.
    void addBytes(const char* bytes, qsizetype length)
    {
        mix(static_cast<quint64>(length), static_cast<quint64>(Kind::Bytes));
        if (length < kWord)
            return length > 0 ? mix(shortWord(bytes, length), 0) : void();
        const char* const lastPair = bytes + length - kPair;
        for (; bytes < lastPair; bytes += kPair)
            mix(word(bytes), word(bytes + kWord));
        // The last words overlap those before them, or each other where there are no two.
        mix(length < kPair ? word(lastPair + kPair - length) : word(lastPair), word(lastPair + kWord));
    }

    [[nodiscard]] std::array<quint64, 2> result() const
    {
        return {folded(m_left ^ kKeys[2], m_right ^ kKeys[3]), folded(m_right ^ kKeys[0], m_left ^ kKeys[1])};
    }

private:
    static constexpr qsizetype kWord = 8;
    static constexpr qsizetype kPair = 16;
    // Any odd numbers without a pattern.
    static constexpr std::array<quint64, 4> kKeys{0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0xD1B54A32D192ED03,
                                                  0x8CB92BA72F3D8DD7};

    static quint64 word(const char* bytes)
    {
        quint64 value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    static quint64 shortWord(const char* bytes, qsizetype length)
    {
        quint64 value = 0;
        std::memcpy(&value, bytes, static_cast<size_t>(length));
        return value;
    }
    /// Both halves of the product, so that every bit of either factor reaches all of the result.
    static quint64 folded(quint64 one, quint64 other)
    {
        __extension__ using Product = unsigned __int128;
        const Product product = static_cast<Product>(one) * other;
        return static_cast<quint64>(product) ^ static_cast<quint64>(product >> 64U);
    }
    /// Two chains, which do not wait for each other.
    void mix(quint64 one, quint64 other)
    {
        m_left = folded(m_left ^ one, other ^ kKeys[0]);
        m_right = folded(m_right ^ other ^ kKeys[2], one ^ kKeys[1]);
    }

    quint64 m_left = kKeys[3];
    quint64 m_right = kKeys[2];
};

} // namespace tessary
