#pragma once

#include "base/Calendar.h"
#include "recognition/dates/DateExpression.h"

namespace tessary {

/// Turns what a text names into a point in time, as seen from a given now.
struct DateResolution {
    Date now;
    Calendar calendar;

    /// A day without a time is meant at 9:00, or at the time of now where it was counted from now. Nothing
    /// for a day or a time that the calendar does not have, such as February 30 or what the clocks jump over.
    [[nodiscard]] std::optional<Date> resolve(const DayExpression& day,
                                              const std::optional<TimeExpression>& time) const;
};

} // namespace tessary
