#pragma once

#include "recognition/dates/TextScanner.h"

namespace tessary {

/// Numbers as Chinese and Japanese texts write them.
struct EastAsianNumber {
    /// 0 to 99 in digits (two at most) or in words: 3, 12, 三, 十二, 二十三, 廿三, 两, 零五.
    [[nodiscard]] static std::optional<int> take(TextScanner& scanner);
    /// Four digits, or four such words: 2026, 二〇二六.
    [[nodiscard]] static std::optional<int> takeYear(TextScanner& scanner);
    /// Whether the character is a digit or one of the words.
    [[nodiscard]] static bool isPart(QChar character);
    /// Whether one can begin here: no part of a number stands before.
    [[nodiscard]] static bool canBegin(const TextScanner& scanner);
};

} // namespace tessary
