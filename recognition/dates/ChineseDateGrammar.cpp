#include "recognition/dates/ChineseDateGrammar.h"

#include "recognition/dates/EastAsianCalendarDay.h"
#include "recognition/dates/EastAsianNumber.h"
#include "recognition/dates/TimeGrammar.h"

#include <array>

namespace tessary {
namespace {

constexpr int kDaysInWeek = 7;
constexpr int kMinutesInHour = 60;

struct DayWord {
    QStringView word;
    int days;
    bool needsTime;
};

// Longer words before those they begin with. Days gone by are nobody's task.
constexpr std::array kDayWords{
    DayWord{u"大后天", 3, false}, DayWord{u"大後天", 3, false}, DayWord{u"后天", 2, false},
    DayWord{u"後天", 2, false},   DayWord{u"明天", 1, true},    DayWord{u"今天", 0, true},
};

struct PartWord {
    QStringView word;
    int days;
    DayPart part;
};

constexpr std::array kPartWords{
    PartWord{u"今晚上", 0, DayPart::Evening}, PartWord{u"今晚", 0, DayPart::Evening},
    PartWord{u"今夜", 0, DayPart::Evening},   PartWord{u"明晚上", 1, DayPart::Evening},
    PartWord{u"明晚", 1, DayPart::Evening},   PartWord{u"明早上", 1, DayPart::Morning},
    PartWord{u"明早", 1, DayPart::Morning},   PartWord{u"后晚", 2, DayPart::Evening},
};

std::optional<DayMatch> dayWord(TextScanner scanner)
{
    for (const DayWord& entry : kDayWords)
        if (scanner.take(entry.word))
            return DayMatch{{DayExpression::FromToday{entry.days, 0, false}},
                            std::nullopt,
                            entry.needsTime,
                            scanner.position()};
    return std::nullopt;
}

/// "今晚8点": the part is left for the time's grammar, which knows what it makes of the hour.
std::optional<DayMatch> partWord(TextScanner scanner)
{
    for (const PartWord& entry : kPartWords)
        if (scanner.take(entry.word))
            return DayMatch{{DayExpression::FromToday{entry.days, 0, false}},
                            TimeGrammar::timeOf(entry.part),
                            false,
                            scanner.position() - entry.word.size() + 1};
    return std::nullopt;
}

/// How many weeks ahead: 下 is 1, 下下 2, 本 or 这 0; nothing where the text does not say.
struct WeekShift {
    std::optional<int> weeks;
    bool past = false;
};

WeekShift takeWeekShift(TextScanner& scanner)
{
    constexpr std::array kShifts{1, 2, 0, 0, 0};
    if (scanner.take(u'上'))
        return {std::nullopt, true};
    if (scanner.take(QStringView(u"下下"))) {
        scanner.takeOneOf({u"个", u"個"});
        return {2, false};
    }
    if (const std::optional<int> index = scanner.takeOneOf({u"下", u"再下", u"本", u"这", u"這"})) {
        scanner.takeOneOf({u"个", u"個"});
        return {kShifts.at(static_cast<size_t>(*index)), false};
    }
    return {};
}

bool isAfterRepetition(const TextScanner& scanner)
{
    constexpr QStringView kBefore = u"每各逢几幾";
    const QChar before = scanner.peek(-1);
    return (!before.isNull() && kBefore.contains(before)) || EastAsianNumber::isPart(before);
}

/// "周五", "下个星期日", "這週三".
std::optional<DayMatch> weekday(TextScanner scanner)
{
    if (isAfterRepetition(scanner))
        return std::nullopt;
    const bool shiftBefore =
        scanner.peek(-1) == u'下' || scanner.peek(-1) == u'上' || scanner.peek(-1) == u'本';
    const WeekShift shift = takeWeekShift(scanner);
    if (shift.past || shiftBefore || !scanner.takeOneOf({u"周", u"週", u"星期", u"礼拜", u"禮拜"}))
        return std::nullopt;
    const std::optional<int> day =
        scanner.takeOneOf({u"一", u"二", u"三", u"四", u"五", u"六", u"日", u"天"});
    constexpr QStringView kCounted = u"次遍回个個年期天";
    if (!day || (!scanner.peek().isNull() && kCounted.contains(scanner.peek())))
        return std::nullopt;
    return DayMatch{{DayExpression::OfWeek{shift.weeks, std::min(*day + 1, kDaysInWeek)}},
                    std::nullopt,
                    false,
                    scanner.position()};
}

/// "明年3月5日", "下个月5号".
std::optional<DayMatch> relativeMonthOrYear(TextScanner scanner)
{
    if (const std::optional<int> year = scanner.takeOneOf({u"今年", u"明年", u"后年", u"後年"})) {
        scanner.skipBlanks();
        scanner.take(u'的');
        const std::optional<DayExpression::OfCalendar> day = EastAsianCalendarDay::takeMonthAndDay(scanner);
        if (!day)
            return std::nullopt;
        return DayMatch{{DayExpression::OfYear{std::min(*year, 2), day->month, day->day}},
                        std::nullopt,
                        false,
                        scanner.position()};
    }
    const std::optional<int> month =
        scanner.takeOneOf({u"本月", u"这个月", u"這個月", u"下月", u"下个月", u"下個月"});
    if (!month)
        return std::nullopt;
    scanner.skipBlanks();
    const std::optional<int> day = EastAsianCalendarDay::takeDay(scanner);
    if (!day)
        return std::nullopt;
    return DayMatch{
        {DayExpression::OfMonth{*month < 3 ? 0 : 1, *day}}, std::nullopt, false, scanner.position()};
}

enum class Span { Minutes, Hours, Days, Weeks, Months };

std::optional<Span> takeSpan(TextScanner& scanner)
{
    scanner.takeOneOf({u"个", u"個"});
    constexpr std::array kSpans{Span::Minutes, Span::Minutes, Span::Hours, Span::Hours,
                                Span::Hours,   Span::Hours,   Span::Days,  Span::Weeks,
                                Span::Weeks,   Span::Weeks,   Span::Months};
    const std::optional<int> index = scanner.takeOneOf(
        {u"分钟", u"分鐘", u"小时", u"小時", u"钟头", u"鐘頭", u"天", u"星期", u"周", u"週", u"月"});
    if (!index)
        return std::nullopt;
    return kSpans.at(static_cast<size_t>(*index));
}

DayExpression ahead(Span span, int count)
{
    switch (span) {
    case Span::Minutes:
        return {DayExpression::FromNow{std::chrono::minutes(count)}};
    case Span::Hours:
        return {DayExpression::FromNow{std::chrono::hours(count)}};
    case Span::Days:
        return {DayExpression::FromToday{count, 0, true}};
    case Span::Weeks:
        return {DayExpression::FromToday{count * kDaysInWeek, 0, true}};
    case Span::Months:
        break;
    }
    return {DayExpression::FromToday{0, count, true}};
}

/// "2小时后", "半小时后", "三天之后", "两周后".
std::optional<DayMatch> after(TextScanner scanner)
{
    if (!EastAsianNumber::canBegin(scanner) && scanner.peek() != u'半')
        return std::nullopt;
    std::optional<int> count;
    const bool half = scanner.take(u'半');
    if (half)
        count = 0;
    else
        count = EastAsianNumber::take(scanner);
    scanner.skipBlanks();
    const std::optional<Span> span = count ? takeSpan(scanner) : std::nullopt;
    if (!span || (half && *span != Span::Hours))
        return std::nullopt;
    scanner.skipBlanks();
    if (!scanner.takeOneOf({u"之后", u"之後", u"以后", u"以後", u"后", u"後"}))
        return std::nullopt;
    if (scanner.peek() == u'天' || scanner.peek() == u'来') // "两天后天黑"
        return std::nullopt;
    const DayExpression day =
        half ? DayExpression{DayExpression::FromNow{std::chrono::minutes(kMinutesInHour / 2)}}
             : ahead(*span, *count);
    return DayMatch{day, std::nullopt, false, scanner.position()};
}

} // namespace

std::optional<DayMatch> ChineseDateGrammar::at(const TextScanner& scanner)
{
    for (const auto grammar : {&partWord, &dayWord, &weekday, &relativeMonthOrYear, &after})
        if (const std::optional<DayMatch> match = grammar(scanner))
            return match;
    return EastAsianCalendarDay::at(scanner);
}

} // namespace tessary
