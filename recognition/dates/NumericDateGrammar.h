#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

class QLocale;

namespace tessary {

/// Days in digits alone: "2026-03-05", "2026/3/5", "2026.3.5", "5/3/2026", "05.03.2026"; "3/5" with a time.
class NumericDateGrammar {
public:
    enum class Order { DayFirst, MonthFirst };

    explicit NumericDateGrammar(Order order) : m_order(order) {}
    /// As the locale's short dates have it.
    [[nodiscard]] static Order orderOf(const QLocale& locale);

    [[nodiscard]] std::optional<DayMatch> at(const TextScanner& scanner) const;

private:
    /// With slashes and hyphens in the order given, else in the only order that makes a day.
    [[nodiscard]] std::optional<DayExpression::OfCalendar> ordered(int first, int second,
                                                                   QChar separator) const;
    [[nodiscard]] std::optional<DayMatch> yearLast(TextScanner scanner) const;

    Order m_order;
};

} // namespace tessary
