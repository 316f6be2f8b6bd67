#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <array>
#include <vector>

namespace tessary {

/// Pieces of one to three characters from which it can be told where a longer piece may stand.
///
/// At each of a text's characters one gram begins: three characters where all are ASCII, two where one of
/// them is not, fewer where the text ends before or, with ASCII, where the third is none. So every piece of a
/// text has the text's own grams, but for those at the piece's end, of which it has the beginning. ASCII
/// letters are in lower case, as LIKE has it. Texts are UTF-8; broken UTF-8 does no harm. A NUL, or a byte
/// that UTF-8 does not have, ends a text, and what follows is another.
namespace TextGrams {

/// Between texts that are indexed together: no gram crosses it.
inline constexpr char kBorder = static_cast<char>(0xFF);

/// The bytes of a gram, at most eight, the first one lowest; none of them is 0.
using Gram = quint64;

/// Appends the grams of all characters, in order; the same one may come several times.
void append(QByteArrayView text, std::vector<Gram>& grams);

/// The bytes of a gram side by side.
class GramBytes {
public:
    explicit GramBytes(Gram gram)
    {
        for (; gram != 0; gram >>= 8U)
            m_bytes.at(m_size++) = static_cast<char>(gram & 0xFFU);
    }
    [[nodiscard]] const char* data() const { return m_bytes.data(); }
    [[nodiscard]] int size() const { return static_cast<int>(m_size); }
    [[nodiscard]] QByteArray toByteArray() const { return {data(), size()}; }

private:
    std::array<char, sizeof(Gram)> m_bytes{};
    size_t m_size = 0;
};

/// What a text has that holds a piece.
struct Wanted {
    QList<QByteArray> grams;    ///< All of these.
    QByteArray beginningOfGram; ///< Unless empty: one that begins like that.
};
[[nodiscard]] Wanted wantedBy(QByteArrayView piece);

} // namespace TextGrams
} // namespace tessary
