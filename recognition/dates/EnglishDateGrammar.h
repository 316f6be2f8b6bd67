#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

namespace tessary {

/// Days in English: "March 5", "5th of March 2026", "Thu, Mar 5", "next Friday", "tomorrow", "tonight",
/// "this afternoon", "in 2 hours".
struct EnglishDateGrammar {
    [[nodiscard]] static std::optional<DayMatch> at(const TextScanner& scanner);
    /// A weekday's name, short ones with or without a dot. @returns 1 for Monday to 7.
    [[nodiscard]] static std::optional<int> takeWeekday(TextScanner& scanner);
};

} // namespace tessary
