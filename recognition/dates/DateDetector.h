#pragma once

#include "base/Calendar.h"
#include "recognition/dates/NumericDateGrammar.h"

#include <QString>

namespace tessary {

class TextScanner;

/// Finds the first date or date-time in free text: Chinese, Japanese, English or numeric; with stray blanks,
/// as recognised text has them. Any thread; takes time in proportion to the text.
///
/// Not dates: a time of day alone; 今天 and 明天 without a time; a weekday of every week; days gone by in
/// words (昨天, last Friday); the time at the head of a line of a log.
class DateDetector {
public:
    /// @param order of day and month in "5/3/2026".
    DateDetector(Calendar calendar, NumericDateGrammar::Order order);
    /// With the system's time zone and locale, as they are now.
    [[nodiscard]] static DateDetector current();

    [[nodiscard]] std::optional<Date> firstDate(const QString& text, Date now) const;

private:
    struct Found;
    [[nodiscard]] std::optional<DayMatch> dayAt(const TextScanner& scanner) const;
    [[nodiscard]] std::optional<Found> dateAt(const TextScanner& scanner) const;
    [[nodiscard]] std::optional<Found> timeThenDayAt(const TextScanner& scanner) const;

    Calendar m_calendar;
    NumericDateGrammar m_numeric;
};

} // namespace tessary
