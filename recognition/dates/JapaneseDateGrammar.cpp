#include "recognition/dates/JapaneseDateGrammar.h"

#include "recognition/dates/EastAsianCalendarDay.h"
#include "recognition/dates/EastAsianNumber.h"
#include "recognition/dates/TimeGrammar.h"

#include <array>

namespace tessary {
namespace {

constexpr int kDaysInWeek = 7;

struct DayWord {
    QStringView word;
    int days;
    bool needsTime;
    std::optional<DayPart> part;
};

// Longer words before those they begin with.
constexpr std::array kDayWords{
    DayWord{u"明明後日", 3, false, {}},
    DayWord{u"しあさって", 3, false, {}},
    DayWord{u"明後日", 2, false, {}},
    DayWord{u"あさって", 2, false, {}},
    DayWord{u"明日", 1, false, {}},
    DayWord{u"あした", 1, false, {}},
    DayWord{u"本日", 0, true, {}},
    DayWord{u"今日", 0, true, {}},
    DayWord{u"明朝", 1, false, DayPart::Morning},
    DayWord{u"明晩", 1, false, DayPart::Evening},
    DayWord{u"今晩", 0, false, DayPart::Evening},
};

std::optional<DayMatch> dayWord(TextScanner scanner)
{
    for (const DayWord& entry : kDayWords) {
        if (!scanner.take(entry.word))
            continue;
        DayMatch match{{DayExpression::FromToday{entry.days, 0, false}},
                       std::nullopt,
                       entry.needsTime,
                       scanner.position()};
        if (entry.part)
            match.time = TimeGrammar::timeOf(*entry.part);
        // The part is left for the time's grammar, which knows what it makes of the hour.
        if (entry.part)
            match.end -= 1;
        return match;
    }
    return std::nullopt;
}

/// "金曜日", "来週の金曜日", "次の月曜".
std::optional<DayMatch> weekday(TextScanner scanner)
{
    if (scanner.peek(-1) == u'毎' || (scanner.peek(-1) == u'の' && scanner.peek(-2) == u'週'))
        return std::nullopt;
    std::optional<int> weeks;
    const std::optional<int> shift = scanner.takeOneOf({u"再来週", u"来週", u"今週", u"次"});
    constexpr std::array kWeeks{2, 1, 0};
    if (shift && *shift < static_cast<int>(kWeeks.size()))
        weeks = kWeeks.at(static_cast<size_t>(*shift));
    if (shift)
        scanner.take(u'の');
    scanner.skipBlanks();
    const std::optional<int> day = JapaneseDateGrammar::takeWeekday(scanner);
    if (!day)
        return std::nullopt;
    return DayMatch{{DayExpression::OfWeek{weeks, *day}}, std::nullopt, false, scanner.position()};
}

/// "令和8年3月5日", "平成元年1月8日".
std::optional<DayMatch> era(TextScanner scanner)
{
    const std::optional<int> which = scanner.takeOneOf({u"令和", u"平成"});
    if (!which)
        return std::nullopt;
    constexpr std::array kYearsBefore{2018, 1988};
    scanner.skipBlanks();
    std::optional<int> year = 1;
    if (!scanner.take(u'元'))
        year = EastAsianNumber::take(scanner);
    scanner.skipBlanks();
    if (!year || !scanner.take(u'年'))
        return std::nullopt;
    scanner.skipBlanks();
    std::optional<DayExpression::OfCalendar> day = EastAsianCalendarDay::takeMonthAndDay(scanner);
    if (!day)
        return std::nullopt;
    day->year = kYearsBefore.at(static_cast<size_t>(*which)) + *year;
    return DayMatch{{*day}, std::nullopt, false, scanner.position()};
}

/// "2時間後", "30分後", "3日後", "1週間後", "2ヶ月後".
std::optional<DayMatch> after(TextScanner scanner)
{
    if (!EastAsianNumber::canBegin(scanner))
        return std::nullopt;
    const std::optional<int> count = EastAsianNumber::take(scanner);
    scanner.skipBlanks();
    const std::optional<int> unit =
        count ? scanner.takeOneOf({u"時間後", u"分後", u"日後", u"週間後", u"ヶ月後", u"か月後", u"カ月後"})
              : std::nullopt;
    if (!unit)
        return std::nullopt;
    DayMatch match{{DayExpression::FromNow{}}, std::nullopt, false, 0};
    match.end = scanner.position();
    switch (*unit) {
    case 0:
        match.day = {DayExpression::FromNow{std::chrono::hours(*count)}};
        break;
    case 1:
        match.day = {DayExpression::FromNow{std::chrono::minutes(*count)}};
        break;
    case 2:
        match.day = {DayExpression::FromToday{*count, 0, true}};
        break;
    case 3:
        match.day = {DayExpression::FromToday{*count * kDaysInWeek, 0, true}};
        break;
    default:
        match.day = {DayExpression::FromToday{0, *count, true}};
    }
    return match;
}

} // namespace

std::optional<int> JapaneseDateGrammar::takeWeekday(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    const std::optional<int> day = ahead.takeOneOf({u"月", u"火", u"水", u"木", u"金", u"土", u"日"});
    if (!day || !ahead.take(u'曜'))
        return std::nullopt;
    ahead.take(u'日');
    scanner = ahead;
    return *day + 1;
}

std::optional<DayMatch> JapaneseDateGrammar::at(const TextScanner& scanner)
{
    for (const auto grammar : {&dayWord, &weekday, &era, &after})
        if (const std::optional<DayMatch> match = grammar(scanner))
            return match;
    return std::nullopt;
}

} // namespace tessary
