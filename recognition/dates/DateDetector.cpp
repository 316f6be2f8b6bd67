#include "recognition/dates/DateDetector.h"

#include "recognition/dates/ChineseDateGrammar.h"
#include "recognition/dates/DateResolution.h"
#include "recognition/dates/EnglishDateGrammar.h"
#include "recognition/dates/JapaneseDateGrammar.h"
#include "recognition/dates/TextScanner.h"
#include "recognition/dates/TimeGrammar.h"

#include <QLocale>

#include <array>

namespace tessary {

struct DateDetector::Found {
    DayMatch match;
    qsizetype end = 0;
};

namespace {

bool isLineBreak(QChar character)
{
    return character == u'\n' || character == u'\r' || character == u'\u2028' || character == u'\u2029';
}

/// Whether an expression can begin with the character; most of a text is sorted out by it.
bool canBegin(const TextScanner& scanner)
{
    const QChar character = scanner.peek();
    if (TextScanner::isAsciiLetter(character))
        return !TextScanner::isAsciiLetter(scanner.peek(-1));
    if (TextScanner::digit(character))
        return true;
    constexpr char16_t kFirstWide = u'\u3000';
    constexpr QStringView kFirsts =
        u"〇○零一二三四五六七八九十廿卅两兩半今明后後大下本这這周週星礼禮令平再来次月火水木金土日しあ";
    return character >= kFirstWide && kFirsts.contains(character);
}

/// Passes over "(周四)", " 木曜日", ", Thu" and the like behind a day.
void skipWeekday(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    ahead.skipBlanks();
    if (ahead.take(u','))
        ahead.skipBlanks();
    const bool bracketed = ahead.takeOneOf({u"(", u"（", u"[", u"【"}).has_value();
    if (bracketed)
        ahead.skipBlanks();
    bool found = JapaneseDateGrammar::takeWeekday(ahead).has_value();
    if (!found && ahead.takeOneOf({u"周", u"週", u"星期", u"礼拜", u"禮拜"}))
        found = ahead.takeOneOf({u"一", u"二", u"三", u"四", u"五", u"六", u"日", u"天"}).has_value();
    if (!found && bracketed)
        found = ahead
                    .takeOneOf({u"月", u"火", u"水", u"木", u"金", u"土", u"日", u"一", u"二", u"三", u"四",
                                u"五", u"六"})
                    .has_value();
    if (!found)
        found = EnglishDateGrammar::takeWeekday(ahead).has_value();
    if (!found)
        return;
    ahead.skipBlanks();
    if (bracketed && !ahead.takeOneOf({u")", u"）", u"]", u"】"}))
        return;
    scanner = ahead;
}

/// The time behind a day, over what may stand between.
std::optional<TimeMatch> timeBehind(TextScanner scanner)
{
    skipWeekday(scanner);
    if (scanner.peek() == u'T' && TextScanner::digit(scanner.peek(1))) {
        scanner.advance(1);
        return TimeGrammar::at(scanner);
    }
    scanner.skipBlanks();
    scanner.takeOneOf({u",", u"，", u"、", u"の", u"的", u"@", u"-", u"–", u"—", u";", u"；"});
    scanner.skipBlanks();
    return TimeGrammar::at(scanner);
}

bool namesLevel(TextScanner scanner)
{
    scanner.skipBlanks();
    scanner.takeOneOf({u"[", u"|", u"-"});
    scanner.skipBlanks();
    constexpr std::array kLevels{"info",  "warn",  "warning", "error",   "debug",
                                 "trace", "fatal", "notice",  "critical"};
    for (const char* level : kLevels)
        if (scanner.takeWord(QLatin1String(level)))
            return true;
    return false;
}

/// Whether a date-time with seconds is that of a line of a log: it heads its line, alone or in brackets, and
/// more follows; or a level does.
bool isOfLog(const TextScanner& start, qsizetype end, const TimeExpression& time)
{
    if (!time.hasSeconds)
        return false;
    TextScanner behind = start.at(end);
    if (namesLevel(behind))
        return true;
    const bool bracketed = start.peek(-1) == u'[';
    const QChar before = start.peek(bracketed ? -2 : -1);
    if (!before.isNull() && !isLineBreak(before))
        return bracketed;
    if (bracketed)
        return true;
    behind.skipBlanks();
    return !behind.peek().isNull() && !isLineBreak(behind.peek());
}

} // namespace

DateDetector::DateDetector(Calendar calendar, NumericDateGrammar::Order order)
    : m_calendar(std::move(calendar)),
      m_numeric(order)
{
}

DateDetector DateDetector::current()
{
    return DateDetector(Calendar::current(), NumericDateGrammar::orderOf(QLocale()));
}

std::optional<DayMatch> DateDetector::dayAt(const TextScanner& scanner) const
{
    std::optional<DayMatch> longest = m_numeric.at(scanner);
    for (const auto grammar : {&ChineseDateGrammar::at, &JapaneseDateGrammar::at, &EnglishDateGrammar::at})
        if (const std::optional<DayMatch> match = grammar(scanner);
            match && (!longest || match->end > longest->end))
            longest = match;
    return longest;
}

std::optional<DateDetector::Found> DateDetector::dateAt(const TextScanner& scanner) const
{
    std::optional<DayMatch> day = dayAt(scanner);
    if (!day)
        return std::nullopt;
    // "Thu, March 5": the day of the month says more.
    if (std::holds_alternative<DayExpression::OfWeek>(day->day.value)) {
        TextScanner ahead = scanner.at(day->end);
        ahead.takeOneOf({u",", u"，", u"."});
        ahead.skipBlanks();
        if (const std::optional<DayMatch> further = dayAt(ahead);
            further && std::holds_alternative<DayExpression::OfCalendar>(further->day.value))
            day = further;
    }
    Found found{*day, day->end};
    if (std::holds_alternative<DayExpression::FromNow>(day->day.value))
        return found;
    if (const std::optional<TimeMatch> time = timeBehind(scanner.at(day->end))) {
        found.match.time = time->time;
        found.end = time->end;
    } else if (day->needsTime) {
        return std::nullopt;
    }
    return found;
}

/// "6pm on March 5", "18:30, 3月5日".
std::optional<DateDetector::Found> DateDetector::timeThenDayAt(const TextScanner& scanner) const
{
    const std::optional<TimeMatch> time = TimeGrammar::unmistakableAt(scanner);
    if (!time)
        return std::nullopt;
    TextScanner ahead = scanner.at(time->end);
    ahead.take(u',');
    ahead.skipBlanks();
    if (ahead.takeWord(QLatin1String("on")))
        ahead.skipBlanks();
    const std::optional<DayMatch> day = dayAt(ahead);
    if (!day || std::holds_alternative<DayExpression::FromNow>(day->day.value))
        return std::nullopt;
    Found found{*day, day->end};
    found.match.time = time->time;
    return found;
}

std::optional<Date> DateDetector::firstDate(const QString& text, Date now) const
{
    const DateResolution resolution{now, m_calendar};
    TextScanner scanner(text);
    while (scanner.position() < text.size()) {
        qsizetype next = scanner.position() + 1;
        std::optional<Found> found;
        if (canBegin(scanner))
            found = dateAt(scanner);
        if (!found && TextScanner::digit(scanner.peek()))
            found = timeThenDayAt(scanner);
        if (found) {
            const bool log = found->match.time && isOfLog(scanner, found->end, *found->match.time);
            const std::optional<Date> date =
                log ? std::nullopt : resolution.resolve(found->match.day, found->match.time);
            if (date)
                return date;
            next = std::max(next, found->end);
        }
        scanner.moveTo(next);
    }
    return std::nullopt;
}

} // namespace tessary
