#include "recognition/dates/EnglishDateGrammar.h"

#include "recognition/dates/TimeGrammar.h"

#include <QString>

#include <algorithm>
#include <array>

namespace tessary {
namespace {

constexpr int kDaysInWeek = 7;
constexpr int kMostDays = 31;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;

constexpr std::array kMonths{"january", "february", "march",     "april",   "may",      "june",
                             "july",    "august",   "september", "october", "november", "december"};
constexpr std::array kWeekdays{"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};
constexpr std::array kOtherShort{"sept", "tues", "thur", "thurs"};

/// Takes a name of the list, whole or as its first three letters; short ones may end with a dot.
/// A name that is a common word as well ("may", "sat") wants its capital.
template <size_t count>
std::optional<int> takeName(TextScanner& scanner, const std::array<const char*, count>& names, bool& isShort)
{
    constexpr int kShort = 3;
    for (size_t index = 0; index < count; ++index) {
        const QLatin1String full(names.at(index));
        TextScanner ahead = scanner;
        const bool whole = ahead.takeWord(full);
        bool taken = whole;
        for (const char* other : kOtherShort)
            if (!taken && full.startsWith(QLatin1String(other).left(kShort)))
                taken = ahead.takeWord(QLatin1String(other));
        taken = taken || ahead.takeWord(full.left(kShort));
        if (!taken)
            continue;
        const bool common = !whole || full.size() <= 5; // march, may
        if (common && !scanner.peek().isUpper())
            return std::nullopt;
        if (!whole)
            ahead.take(u'.');
        isShort = !whole;
        scanner = ahead;
        return static_cast<int>(index) + 1;
    }
    return std::nullopt;
}

/// "5", "5th"; not "5.2" or "5%".
std::optional<int> takeDay(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    const std::optional<int> day = ahead.takeNumber(1, 2);
    if (!day || *day < 1 || *day > kMostDays)
        return std::nullopt;
    TextScanner ordinal = ahead;
    if (ordinal.takeOneOf({u"st", u"nd", u"rd", u"th"}) && ordinal.endsWord())
        ahead = ordinal;
    if (!ahead.endsNumber() || ahead.peek() == u':')
        return std::nullopt;
    scanner = ahead;
    return day;
}

/// ", 2026", " 2026".
std::optional<int> takeYear(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    ahead.take(u',');
    ahead.skipBlanks();
    const std::optional<int> year = ahead.takeNumber(4, 4);
    if (!year || *year < kFirstYear || *year > kLastYear || !ahead.endsNumber())
        return std::nullopt;
    scanner = ahead;
    return year;
}

/// "March 5, 2026".
std::optional<DayMatch> monthFirst(TextScanner scanner)
{
    bool isShort = false;
    const QChar before = scanner.peek(-1);
    const bool afterSize = before == u' ' && TextScanner::digit(scanner.peek(-2)).has_value();
    const std::optional<int> month = takeName(scanner, kMonths, isShort);
    if (!month || !scanner.skipBlanks())
        return std::nullopt;
    const std::optional<int> day = takeDay(scanner);
    if (!day)
        return std::nullopt;
    const std::optional<int> year = takeYear(scanner);
    // "4096 Mar  5 12:30" is a line of a list of files.
    if (afterSize && isShort && !year)
        return std::nullopt;
    return DayMatch{{DayExpression::OfCalendar{year, *month, *day}}, std::nullopt, false, scanner.position()};
}

/// "5 March 2026", "5th of March".
std::optional<DayMatch> dayFirst(TextScanner scanner)
{
    if (!scanner.beginsNumber())
        return std::nullopt;
    const std::optional<int> day = takeDay(scanner);
    if (!day || !scanner.skipBlanks())
        return std::nullopt;
    if (scanner.takeWord(QLatin1String("of")))
        scanner.skipBlanks();
    bool isShort = false;
    const std::optional<int> month = takeName(scanner, kMonths, isShort);
    if (!month)
        return std::nullopt;
    const std::optional<int> year = takeYear(scanner);
    // "12 Mar 5" is a line of a list of files as well.
    TextScanner ahead = scanner;
    if (!year && ahead.skipBlanks() && ahead.takeNumber(1, 2) && isShort && ahead.peek() != u':')
        return std::nullopt;
    return DayMatch{{DayExpression::OfCalendar{year, *month, *day}}, std::nullopt, false, scanner.position()};
}

/// "Friday", "next Friday", "Fri" before a time.
std::optional<DayMatch> weekday(TextScanner scanner)
{
    if (!scanner.beginsWord())
        return std::nullopt;
    const QString before = scanner.wordBefore();
    if (before == QLatin1String("every") || before == QLatin1String("each") ||
        before == QLatin1String("last") || before == QLatin1String("next") || before == QLatin1String("this"))
        return std::nullopt;
    std::optional<int> weeks;
    if (scanner.takeWord(QLatin1String("next")))
        weeks = 1;
    else if (scanner.takeWord(QLatin1String("this")))
        weeks = 0;
    if (weeks && !scanner.skipBlanks())
        return std::nullopt;
    bool isShort = false;
    const std::optional<int> day = takeName(scanner, kWeekdays, isShort);
    if (!day || !scanner.endsWord())
        return std::nullopt;
    return DayMatch{
        {DayExpression::OfWeek{weeks, *day}}, std::nullopt, isShort && !weeks, scanner.position()};
}

/// "tomorrow", "tonight", "today at 6", "this evening", "the day after tomorrow".
std::optional<DayMatch> dayWord(TextScanner scanner)
{
    const auto match = [&scanner](int days, bool needsTime, std::optional<DayPart> part) {
        DayMatch made{
            {DayExpression::FromToday{days, 0, false}}, std::nullopt, needsTime, scanner.position()};
        if (part)
            made.time = TimeGrammar::timeOf(*part);
        return made;
    };
    TextScanner phrase = scanner;
    if (phrase.takeWord(QLatin1String("day")) && phrase.skipBlanks() &&
        phrase.takeWord(QLatin1String("after")) && phrase.skipBlanks() &&
        phrase.takeWord(QLatin1String("tomorrow"))) {
        scanner = phrase;
        return match(2, false, std::nullopt);
    }
    if (scanner.takeWord(QLatin1String("tomorrow")))
        return match(1, false, std::nullopt);
    if (scanner.takeWord(QLatin1String("tonight")))
        return match(0, false, DayPart::Evening);
    if (scanner.takeWord(QLatin1String("today")))
        return match(0, true, std::nullopt);
    if (!scanner.takeWord(QLatin1String("this")) || !scanner.skipBlanks())
        return std::nullopt;
    if (scanner.takeWord(QLatin1String("afternoon")))
        return match(0, false, DayPart::Afternoon);
    if (scanner.takeWord(QLatin1String("evening")))
        return match(0, false, DayPart::Evening);
    if (scanner.takeWord(QLatin1String("morning")))
        return match(0, false, DayPart::Morning);
    return std::nullopt;
}

/// 1 to 999 in digits, "a", "an", "one" to "twelve".
std::optional<int> takeCount(TextScanner& scanner)
{
    if (const std::optional<int> number = scanner.takeNumber(1, 3))
        return number;
    if (scanner.takeWord(QLatin1String("an")) || scanner.takeWord(QLatin1String("a")))
        return 1;
    constexpr std::array kWords{"one",   "two",   "three", "four", "five",   "six",
                                "seven", "eight", "nine",  "ten",  "eleven", "twelve"};
    for (size_t index = 0; index < kWords.size(); ++index)
        if (scanner.takeWord(QLatin1String(kWords.at(index))))
            return static_cast<int>(index) + 1;
    return std::nullopt;
}

/// What was done in two hours is done: "completed in 2 hours".
bool followsDoing(const TextScanner& scanner)
{
    constexpr std::array kDoing{"done", "built", "ran", "run",  "took",  "took",
                                "sold", "made",  "was", "ends", "tested"};
    const QString before = scanner.wordBefore();
    return before.endsWith(QLatin1String("ed")) ||
           std::any_of(kDoing.begin(), kDoing.end(),
                       [&](const char* word) { return before == QLatin1String(word); });
}

/// "in 2 hours", "in half an hour", "in a week".
std::optional<DayMatch> inAWhile(TextScanner scanner)
{
    if (followsDoing(scanner) || !scanner.takeWord(QLatin1String("in")) || !scanner.skipBlanks())
        return std::nullopt;
    TextScanner half = scanner;
    if (half.takeWord(QLatin1String("half")) && half.skipBlanks() && half.takeWord(QLatin1String("an")) &&
        half.skipBlanks() && half.takeWord(QLatin1String("hour")))
        return DayMatch{
            {DayExpression::FromNow{std::chrono::minutes(30)}}, std::nullopt, false, half.position()};
    const std::optional<int> count = takeCount(scanner);
    if (!count || !scanner.skipBlanks())
        return std::nullopt;
    const auto takes = [&scanner](const char* one, const char* many) {
        return scanner.takeWord(QLatin1String(many)) || scanner.takeWord(QLatin1String(one));
    };
    DayExpression day{DayExpression::FromNow{}};
    if (takes("minute", "minutes") || takes("min", "mins"))
        day = {DayExpression::FromNow{std::chrono::minutes(*count)}};
    else if (takes("hour", "hours"))
        day = {DayExpression::FromNow{std::chrono::hours(*count)}};
    else if (takes("day", "days"))
        day = {DayExpression::FromToday{*count, 0, true}};
    else if (takes("week", "weeks"))
        day = {DayExpression::FromToday{*count * kDaysInWeek, 0, true}};
    else if (takes("month", "months"))
        day = {DayExpression::FromToday{0, *count, true}};
    else
        return std::nullopt;
    return DayMatch{day, std::nullopt, false, scanner.position()};
}

} // namespace

std::optional<int> EnglishDateGrammar::takeWeekday(TextScanner& scanner)
{
    bool isShort = false;
    return takeName(scanner, kWeekdays, isShort);
}

std::optional<DayMatch> EnglishDateGrammar::at(const TextScanner& scanner)
{
    if (TextScanner::digit(scanner.peek()))
        return dayFirst(scanner);
    if (!TextScanner::isAsciiLetter(scanner.peek()) || !scanner.beginsWord())
        return std::nullopt;
    for (const auto grammar : {&monthFirst, &dayWord, &weekday, &inAWhile})
        if (const std::optional<DayMatch> match = grammar(scanner))
            return match;
    return std::nullopt;
}

} // namespace tessary
