#pragma once

#include <QDateTime>
#include <QHash>

#include <compare>

namespace tessary {

/// A point in time: seconds since 1970-01-01 00:00:00 UTC, with a fraction.
///
/// Stores keep exactly this double, bit for bit, so that equality survives a round trip.
struct Date {
    double secondsSince1970 = 0;

    [[nodiscard]] static Date fromDateTime(const QDateTime& time)
    {
        return Date{static_cast<double>(time.toMSecsSinceEpoch()) / 1000.0};
    }
    /// In local time; precise to the millisecond.
    [[nodiscard]] QDateTime toDateTime() const
    {
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(secondsSince1970 * 1000.0));
    }
    [[nodiscard]] Date addingSeconds(double seconds) const { return Date{secondsSince1970 + seconds}; }

    friend auto operator<=>(const Date&, const Date&) = default;
    friend size_t qHash(const Date& date, size_t seed = 0) noexcept
    {
        return ::qHash(date.secondsSince1970, seed);
    }
};

} // namespace tessary
