#pragma once

#include "base/Date.h"

#include <QTimeZone>

#include <optional>

namespace tessary {

/// The Gregorian calendar as seen in one time zone.
struct Calendar {
    QTimeZone timeZone;

    /// That of the system, now; UTC where the system names none.
    [[nodiscard]] static Calendar current();

    /// The first instant of the day that contains the date, which is not midnight where the clocks jump
    /// over it.
    [[nodiscard]] Date startOfDay(Date date) const;
    /// The same time of day, that many days later; fewer than 0 means earlier. Where the clocks jump over
    /// that time, the time to which they jump.
    [[nodiscard]] Date addingDays(Date date, int days) const;
    /// Start of a day written as "yyyy-MM-dd" with all its ten ASCII characters; nothing when the text is
    /// anything else, or no day of the calendar. A day that the zone left out begins with the next one.
    [[nodiscard]] std::optional<Date> date(const QString& text) const;

    friend bool operator==(const Calendar&, const Calendar&) = default;
};

} // namespace tessary
