#pragma once

#include <QHash>
#include <QString>

#include <array>
#include <memory>

namespace tessary {

class LatinTransform;

/// The toneless syllable of each Han character, as ICU gives it for the character alone. Filled in blocks
/// of 256 characters as they turn up (1.5 ms a block, 8 bytes a character), so that nobody waits for, or
/// keeps, what no text uses. One thread at a time.
class HanSyllables {
public:
    /// @returns the empty text for characters that are not Han or that ICU does not know.
    [[nodiscard]] QLatin1StringView of(char32_t character, LatinTransform& latin);

private:
    static constexpr size_t kLongestSyllable = 7;
    static constexpr char32_t kBlockSize = 256;
    struct Syllable {
        quint8 length = 0;
        std::array<char, kLongestSyllable> letters{};
    };
    using Block = std::array<Syllable, kBlockSize>;

    [[nodiscard]] static std::unique_ptr<Block> fill(char32_t first, LatinTransform& latin);

    static constexpr char32_t kPlaneBlocks = 256;
    std::array<std::unique_ptr<Block>, kPlaneBlocks> m_basic; // the basic plane, by direct index
    QHash<char32_t, std::shared_ptr<Block>> m_rare;           // the planes above it
};

} // namespace tessary
