#include "base/Calendar.h"

#include <cmath>

namespace tessary {

Calendar Calendar::current()
{
    return Calendar{QTimeZone::systemTimeZone()};
}

Date Calendar::startOfDay(Date date) const
{
    const auto milliseconds = static_cast<qint64>(std::floor(date.secondsSince1970 * 1000));
    const QDate day = QDateTime::fromMSecsSinceEpoch(milliseconds, timeZone).date();
    return Date::fromDateTime(day.startOfDay(timeZone));
}

Date Calendar::addingDays(Date date, int days) const
{
    const double whole = std::floor(date.secondsSince1970);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(whole), timeZone);
    const Date moved = Date::fromDateTime(time.addDays(days));
    return moved.addingSeconds(date.secondsSince1970 - whole);
}

std::optional<Date> Calendar::date(const QString& text) const
{
    const QDate day = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
    if (!day.isValid())
        return std::nullopt;
    return Date::fromDateTime(day.startOfDay(timeZone));
}

} // namespace tessary
