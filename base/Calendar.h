#pragma once

#include "base/Date.h"

#include <QTimeZone>

#include <optional>

namespace tessary {

/// The Gregorian calendar as seen in one time zone.
struct Calendar {
    QTimeZone timeZone;

    /// That of the system, now.
    [[nodiscard]] static Calendar current();

    /// The first instant of the day that contains the date, which is not midnight where the clocks jump
    /// over it.
    [[nodiscard]] Date startOfDay(Date date) const;
    /// The same time of day, that many days later; fewer than 0 means earlier.
    [[nodiscard]] Date addingDays(Date date, int days) const;
    /// Start of a day written as "yyyy-MM-dd"; nothing when the text is anything else.
    [[nodiscard]] std::optional<Date> date(const QString& text) const;

    friend bool operator==(const Calendar&, const Calendar&) = default;
};

} // namespace tessary
