#include "base/Calendar.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

/// The first instant of the day; where a zone has left out the whole day, of the next one it has.
QDateTime firstInstant(QDate day, const QTimeZone& timeZone)
{
    QDateTime first = day.startOfDay(timeZone);
    constexpr int kMostDaysLeftOut = 2;
    for (int skipped = 0; !first.isValid() && skipped < kMostDaysLeftOut; ++skipped) {
        day = day.addDays(1);
        first = day.startOfDay(timeZone);
    }
    return first;
}

/// The number that the text is, if it is nothing but that many of the digits 0 to 9.
std::optional<int> number(QStringView text)
{
    const bool isNumber =
        std::all_of(text.begin(), text.end(), [](QChar unit) { return unit >= u'0' && unit <= u'9'; });
    if (!isNumber)
        return std::nullopt;
    return text.toInt();
}

} // namespace

Calendar Calendar::current()
{
    const QTimeZone zone = QTimeZone::systemTimeZone();
    return Calendar{zone.isValid() ? zone : QTimeZone::utc()};
}

Date Calendar::startOfDay(Date date) const
{
    const auto milliseconds = static_cast<qint64>(std::floor(date.secondsSince1970 * 1000));
    const QDate day = QDateTime::fromMSecsSinceEpoch(milliseconds, timeZone).date();
    return Date::fromDateTime(firstInstant(day, timeZone));
}

Date Calendar::addingDays(Date date, int days) const
{
    constexpr double kSecondsInDay = 24.0 * 60 * 60;
    const auto offset = [this](double instant) {
        const auto whole = static_cast<qint64>(std::floor(instant));
        return timeZone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(whole, Qt::UTC));
    };
    const int offsetBefore = offset(date.secondsSince1970);
    const double moved = date.secondsSince1970 + kSecondsInDay * days;
    const int offsetAfter = offset(moved);
    const double shifted = moved + offsetBefore - offsetAfter;
    // A time of day that the clocks jump over is as far into the gap as they jump.
    return Date{offset(shifted) == offsetAfter ? shifted : moved};
}

std::optional<Date> Calendar::date(const QString& text) const
{
    constexpr qsizetype kLength = 10;
    if (text.size() != kLength || text.at(4) != u'-' || text.at(7) != u'-')
        return std::nullopt;
    const QStringView view(text);
    const std::optional<int> year = number(view.first(4));
    const std::optional<int> month = number(view.sliced(5, 2));
    const std::optional<int> day = number(view.sliced(8, 2));
    if (!year || !month || !day)
        return std::nullopt;
    const QDate date(*year, *month, *day);
    if (!date.isValid())
        return std::nullopt;
    return Date::fromDateTime(firstInstant(date, timeZone));
}

} // namespace tessary
