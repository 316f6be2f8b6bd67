#include "recognition/dates/DateResolution.h"

#include <QDateTime>

namespace tessary {
namespace {

constexpr int kMinutesInDay = 24 * 60;
constexpr int kMinutesInHour = 60;
constexpr int kDaysInWeek = 7;
constexpr int kMonthsInYear = 12;
constexpr int kLongestWait = 8; // years, from one February 29 to the next round a century

QDateTime local(Date date, const Calendar& calendar)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(date.secondsSince1970 * 1000), calendar.timeZone);
}

/// Days of the calendar that an expression means, seen from today.
struct DayOf {
    QDate today;

    std::optional<QDate> operator()(const DayExpression::OfCalendar& day) const
    {
        if (day.year)
            return valid(QDate(*day.year, day.month, day.day));
        for (int years = 0; years <= kLongestWait; ++years) {
            const QDate next(today.year() + years, day.month, day.day);
            if (next.isValid() && next >= today)
                return next;
        }
        return std::nullopt;
    }
    std::optional<QDate> operator()(const DayExpression::OfMonth& day) const
    {
        const QDate first(today.year(), today.month(), 1);
        if (day.monthsFromNow)
            return in(first.addMonths(*day.monthsFromNow), day.day);
        for (int months = 0; months <= kMonthsInYear; ++months)
            if (const std::optional<QDate> next = in(first.addMonths(months), day.day);
                next && *next >= today)
                return next;
        return std::nullopt;
    }
    std::optional<QDate> operator()(const DayExpression::OfYear& day) const
    {
        return valid(QDate(today.year() + day.yearsFromNow, day.month, day.day));
    }
    std::optional<QDate> operator()(const DayExpression::OfWeek& day) const
    {
        const QDate monday = today.addDays(1 - today.dayOfWeek());
        if (day.weeksFromNow)
            return monday.addDays(*day.weeksFromNow * kDaysInWeek + day.weekday - 1);
        return today.addDays((day.weekday - today.dayOfWeek() + kDaysInWeek) % kDaysInWeek);
    }
    std::optional<QDate> operator()(const DayExpression::FromToday& day) const
    {
        return valid(today.addMonths(day.months).addDays(day.days));
    }
    std::optional<QDate> operator()(const DayExpression::FromNow&) const { return std::nullopt; }

private:
    static std::optional<QDate> valid(QDate date)
    {
        return date.isValid() ? std::optional(date) : std::nullopt;
    }
    static std::optional<QDate> in(QDate month, int day)
    {
        return valid(QDate(month.year(), month.month(), day));
    }
};

std::optional<Date> instant(QDate day, const TimeExpression& time, const Calendar& calendar)
{
    const QDate date = day.addDays(time.minutes / kMinutesInDay);
    const int minutes = time.minutes % kMinutesInDay;
    const QTime clock(minutes / kMinutesInHour, minutes % kMinutesInHour, time.seconds);
    if (time.utcOffsetSeconds)
        return Date::fromDateTime(QDateTime(date, clock, Qt::OffsetFromUTC, *time.utcOffsetSeconds));
    const QDateTime there(date, clock, calendar.timeZone);
    const QDateTime back = QDateTime::fromMSecsSinceEpoch(there.toMSecsSinceEpoch(), calendar.timeZone);
    if (!there.isValid() || back.date() != date || back.time() != clock)
        return std::nullopt; // the clocks jump over it
    return Date::fromDateTime(there);
}

TimeExpression timeFor(const DayExpression& day, const std::optional<TimeExpression>& time,
                       const QDateTime& now)
{
    if (time)
        return *time;
    const auto* counted = std::get_if<DayExpression::FromToday>(&day.value);
    if (counted != nullptr && counted->keepsTime)
        return {now.time().hour() * kMinutesInHour + now.time().minute(), now.time().second(), true, {}};
    constexpr int kNine = 9;
    return {kNine * kMinutesInHour, 0, false, {}};
}

} // namespace

std::optional<Date> DateResolution::resolve(const DayExpression& day,
                                            const std::optional<TimeExpression>& time) const
{
    if (const auto* span = std::get_if<DayExpression::FromNow>(&day.value))
        return now.addingSeconds(static_cast<double>(std::chrono::seconds(span->span).count()));
    const QDateTime here = local(now, calendar);
    const std::optional<QDate> date = std::visit(DayOf{here.date()}, day.value);
    if (!date)
        return std::nullopt;
    const TimeExpression clock = timeFor(day, time, here);
    std::optional<Date> found = instant(*date, clock, calendar);
    const auto* weekday = std::get_if<DayExpression::OfWeek>(&day.value);
    if (found && weekday != nullptr && !weekday->weeksFromNow && *found <= now)
        found = instant(date->addDays(kDaysInWeek), clock, calendar);
    return found;
}

} // namespace tessary
