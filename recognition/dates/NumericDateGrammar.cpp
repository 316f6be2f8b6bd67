#include "recognition/dates/NumericDateGrammar.h"

#include <QLocale>

namespace tessary {
namespace {

constexpr int kMonths = 12;
constexpr int kMostDays = 31;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;
constexpr int kCentury = 2000;

/// The sign between the numbers; a null character where there is none.
QChar takeSeparator(TextScanner& scanner)
{
    for (const QChar separator : {QChar(u'-'), QChar(u'/'), QChar(u'.')})
        if (scanner.take(separator))
            return separator;
    return {};
}

bool canEnd(const TextScanner& scanner)
{
    // "2026-03-05T18:30"
    if (scanner.peek() == u'T' && TextScanner::digit(scanner.peek(1)))
        return true;
    return scanner.endsNumber();
}

std::optional<DayMatch> yearFirst(TextScanner scanner)
{
    const std::optional<int> year = scanner.takeNumber(4, 4);
    if (!year || *year < kFirstYear || *year > kLastYear)
        return std::nullopt;
    const QChar separator = takeSeparator(scanner);
    if (separator.isNull())
        return std::nullopt;
    const std::optional<int> month = scanner.takeNumber(1, 2);
    if (!month || !scanner.take(separator))
        return std::nullopt;
    const std::optional<int> day = scanner.takeNumber(1, 2);
    if (!day || !canEnd(scanner))
        return std::nullopt;
    return DayMatch{{DayExpression::OfCalendar{year, *month, *day}}, std::nullopt, false, scanner.position()};
}

} // namespace

NumericDateGrammar::Order NumericDateGrammar::orderOf(const QLocale& locale)
{
    const QString format = locale.dateFormat(QLocale::ShortFormat);
    return format.indexOf(u'd') < format.indexOf(u'M') ? Order::DayFirst : Order::MonthFirst;
}

std::optional<DayExpression::OfCalendar> NumericDateGrammar::ordered(int first, int second,
                                                                     QChar separator) const
{
    const bool dayFirst = separator == u'.' || m_order == Order::DayFirst;
    int month = dayFirst ? second : first;
    int day = dayFirst ? first : second;
    if (month > kMonths && day <= kMonths)
        std::swap(month, day);
    if (month < 1 || month > kMonths || day < 1 || day > kMostDays)
        return std::nullopt;
    return DayExpression::OfCalendar{std::nullopt, month, day};
}

std::optional<DayMatch> NumericDateGrammar::yearLast(TextScanner scanner) const
{
    const std::optional<int> first = scanner.takeNumber(1, 2);
    const QChar separator = first ? takeSeparator(scanner) : QChar();
    const std::optional<int> second = separator.isNull() ? std::nullopt : scanner.takeNumber(1, 2);
    if (!second)
        return std::nullopt;
    std::optional<DayExpression::OfCalendar> day = ordered(*first, *second, separator);
    if (!day)
        return std::nullopt;
    if (separator == u'/' && scanner.endsNumber()) // "3/5 18:30"; else a fraction, or the third of five pages
        return DayMatch{{*day}, std::nullopt, true, scanner.position()};
    if (!scanner.take(separator))
        return std::nullopt;
    TextScanner ahead = scanner;
    std::optional<int> year = ahead.takeNumber(4, 4);
    if (!year && separator == u'/') {
        ahead = scanner;
        year = ahead.takeNumber(2, 2);
        if (year)
            *year += kCentury;
    }
    if (!year || *year < kFirstYear || *year > kLastYear || !canEnd(ahead))
        return std::nullopt;
    day->year = year;
    return DayMatch{{*day}, std::nullopt, false, ahead.position()};
}

std::optional<DayMatch> NumericDateGrammar::at(const TextScanner& scanner) const
{
    if (!TextScanner::digit(scanner.peek()) || !scanner.beginsNumber())
        return std::nullopt;
    if (const std::optional<DayMatch> match = yearFirst(scanner))
        return match;
    return yearLast(scanner);
}

} // namespace tessary
