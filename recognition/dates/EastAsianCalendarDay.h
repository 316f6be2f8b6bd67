#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

namespace tessary {

/// Days with 年, 月 and 日, which Chinese and Japanese write alike.
struct EastAsianCalendarDay {
    /// "2026年3月5日", "26年3月5日", "3月5日", and "5号" or "5日", which need a time.
    [[nodiscard]] static std::optional<DayMatch> at(const TextScanner& scanner);
    /// "3月5日", the year being known otherwise.
    [[nodiscard]] static std::optional<DayExpression::OfCalendar> takeMonthAndDay(TextScanner& scanner);
    /// "5日", "五号".
    [[nodiscard]] static std::optional<int> takeDay(TextScanner& scanner);
};

} // namespace tessary
