#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

namespace tessary {

/// Days in Japanese: "明後日", "来週の金曜日", "木曜", "令和8年3月5日", "3日後", "明朝". Those with 月 and 日
/// alone are EastAsianCalendarDay's.
struct JapaneseDateGrammar {
    [[nodiscard]] static std::optional<DayMatch> at(const TextScanner& scanner);
    /// "木曜日", "木曜". @returns 1 for Monday to 7.
    [[nodiscard]] static std::optional<int> takeWeekday(TextScanner& scanner);
};

} // namespace tessary
