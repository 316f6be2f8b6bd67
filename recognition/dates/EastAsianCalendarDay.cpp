#include "recognition/dates/EastAsianCalendarDay.h"

#include "recognition/dates/EastAsianNumber.h"

namespace tessary {
namespace {

constexpr int kMonths = 12;
constexpr int kMostDays = 31;
constexpr int kCentury = 2000;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;

/// "2026年", "26年", "二〇二六年".
std::optional<int> takeYear(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    std::optional<int> year = EastAsianNumber::takeYear(ahead);
    if (!year) {
        ahead = scanner;
        year = ahead.takeNumber(2, 2);
        if (year)
            *year += kCentury;
    }
    if (!year || *year < kFirstYear || *year > kLastYear)
        return std::nullopt;
    ahead.skipBlanks();
    if (!ahead.take(u'年'))
        return std::nullopt;
    ahead.skipBlanks();
    scanner = ahead;
    return year;
}

/// "农历八月十五" is a day of another calendar.
bool followsLunar(const TextScanner& scanner)
{
    const QChar last = scanner.peek(-1);
    const QChar first = scanner.peek(-2);
    return (last == u'历' || last == u'曆') && (first == u'农' || first == u'農' || first == u'阴' ||
                                                first == u'陰' || first == u'旧' || first == u'舊');
}

} // namespace

std::optional<int> EastAsianCalendarDay::takeDay(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    const std::optional<int> day = EastAsianNumber::take(ahead);
    if (!day || *day < 1 || *day > kMostDays)
        return std::nullopt;
    ahead.skipBlanks();
    if (!ahead.takeOneOf({u"日", u"号", u"號"}))
        return std::nullopt;
    scanner = ahead;
    return day;
}

std::optional<DayExpression::OfCalendar> EastAsianCalendarDay::takeMonthAndDay(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    const std::optional<int> month = EastAsianNumber::take(ahead);
    if (!month || *month < 1 || *month > kMonths)
        return std::nullopt;
    ahead.skipBlanks();
    if (!ahead.take(u'月'))
        return std::nullopt;
    ahead.take(u'份');
    ahead.skipBlanks();
    const std::optional<int> day = takeDay(ahead);
    if (!day)
        return std::nullopt;
    scanner = ahead;
    return DayExpression::OfCalendar{std::nullopt, *month, *day};
}

std::optional<DayMatch> EastAsianCalendarDay::at(const TextScanner& scanner)
{
    if (!EastAsianNumber::canBegin(scanner) || followsLunar(scanner))
        return std::nullopt;
    TextScanner ahead = scanner;
    const std::optional<int> year = takeYear(ahead);
    if (std::optional<DayExpression::OfCalendar> day = takeMonthAndDay(ahead)) {
        // "2026年2月30日" has not to be read as a day of another year.
        const TextScanner before = scanner.at(scanner.position() - 1);
        if (!year && (before.peek() == u'年' || before.peek() == u'-'))
            return std::nullopt;
        day->year = year;
        return DayMatch{{*day}, std::nullopt, false, ahead.position()};
    }
    if (year)
        return std::nullopt;
    // What follows a month belongs to it, even where both make no day.
    TextScanner before = scanner;
    for (int blanks = 0; blanks < 3 && before.peek(-1).isSpace(); ++blanks)
        before.advance(-1);
    if (before.peek(-1) == u'月' || before.peek(-1) == u'-')
        return std::nullopt;
    const std::optional<int> alone = takeDay(ahead);
    if (!alone)
        return std::nullopt;
    return DayMatch{{DayExpression::OfMonth{std::nullopt, *alone}}, std::nullopt, true, ahead.position()};
}

} // namespace tessary
