#include "recognition/dates/TimeGrammar.h"

#include "recognition/dates/EastAsianNumber.h"

#include <array>

namespace tessary {
namespace {

constexpr int kMinutesInHour = 60;
constexpr int kSecondsInMinute = 60;
constexpr int kHoursInHalfDay = 12;
constexpr int kHoursInDay = 24;
constexpr int kQuarter = 15;

enum class HalfDay { Before, After };

struct PartWord {
    QStringView word;
    DayPart part;
};

// Longer words before those they begin with.
constexpr std::array kPartWords{
    PartWord{u"凌晨", DayPart::Dawn},      PartWord{u"清晨", DayPart::Dawn},
    PartWord{u"早上", DayPart::Morning},   PartWord{u"早晨", DayPart::Morning},
    PartWord{u"上午", DayPart::Morning},   PartWord{u"午前", DayPart::Morning},
    PartWord{u"早", DayPart::Morning},     PartWord{u"朝", DayPart::Morning},
    PartWord{u"中午", DayPart::Noon},      PartWord{u"正午", DayPart::Noon},
    PartWord{u"お昼", DayPart::Noon},      PartWord{u"昼", DayPart::Noon},
    PartWord{u"下午", DayPart::Afternoon}, PartWord{u"午後", DayPart::Afternoon},
    PartWord{u"午后", DayPart::Afternoon}, PartWord{u"傍晚", DayPart::Dusk},
    PartWord{u"夕方", DayPart::Dusk},      PartWord{u"晚上", DayPart::Evening},
    PartWord{u"晚间", DayPart::Evening},   PartWord{u"晚間", DayPart::Evening},
    PartWord{u"夜里", DayPart::Evening},   PartWord{u"夜晚", DayPart::Evening},
    PartWord{u"晚", DayPart::Evening},     PartWord{u"半夜", DayPart::Midnight},
    PartWord{u"深夜", DayPart::Midnight},  PartWord{u"午夜", DayPart::Midnight},
    PartWord{u"夜", DayPart::Evening},     PartWord{u"晩", DayPart::Evening},
};

std::optional<DayPart> takePart(TextScanner& scanner)
{
    for (const PartWord& entry : kPartWords)
        if (scanner.take(entry.word))
            return entry.part;
    return std::nullopt;
}

std::optional<DayPart> takeEnglishPart(TextScanner& scanner)
{
    scanner.takeWord(QLatin1String("in"));
    scanner.skipBlanks();
    scanner.takeWord(QLatin1String("the"));
    scanner.skipBlanks();
    if (scanner.takeWord(QLatin1String("morning")))
        return DayPart::Morning;
    if (scanner.takeWord(QLatin1String("afternoon")))
        return DayPart::Afternoon;
    if (scanner.takeWord(QLatin1String("evening")) || scanner.takeWord(QLatin1String("night")))
        return DayPart::Evening;
    if (scanner.takeWord(QLatin1String("noon")))
        return DayPart::Noon;
    if (scanner.takeWord(QLatin1String("midnight")))
        return DayPart::Midnight;
    return std::nullopt;
}

/// The hour of a 24-hour clock, or of the next day from 24 on.
int hourIn(DayPart part, int hour)
{
    constexpr int kLastOfNight = 4;
    constexpr int kFirstOfNoon = 10;
    if (hour > kHoursInHalfDay)
        return hour;
    switch (part) {
    case DayPart::Dawn:
        return hour == kHoursInHalfDay ? 0 : hour;
    case DayPart::Morning:
        return hour;
    case DayPart::Noon:
        return hour < kFirstOfNoon ? hour + kHoursInHalfDay : hour;
    case DayPart::Afternoon:
    case DayPart::Dusk:
        return hour < kHoursInHalfDay ? hour + kHoursInHalfDay : hour;
    case DayPart::Evening:
    case DayPart::Midnight:
        if (hour == kHoursInHalfDay)
            return kHoursInDay;
        return hour <= kLastOfNight ? hour + kHoursInDay : hour + kHoursInHalfDay;
    }
    return hour;
}

std::optional<HalfDay> takeHalfDay(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    ahead.skipBlanks();
    const QChar first = ahead.peek().toLower();
    if (first != u'a' && first != u'p')
        return std::nullopt;
    ahead.advance(1);
    const bool dotted = ahead.take(u'.');
    if (ahead.peek().toLower() != u'm')
        return std::nullopt;
    ahead.advance(1);
    if (dotted)
        ahead.take(u'.');
    if (!ahead.endsWord() || TextScanner::digit(ahead.peek()))
        return std::nullopt;
    scanner = ahead;
    return first == u'p' ? HalfDay::After : HalfDay::Before;
}

/// Hours of the 12-hour clock become those of the 24-hour clock; false when there is no such hour.
bool applyHalfDay(std::optional<HalfDay> half, int& hour)
{
    if (!half)
        return true;
    if (hour < 1 || hour > kHoursInHalfDay)
        return false;
    hour = hour % kHoursInHalfDay + (*half == HalfDay::After ? kHoursInHalfDay : 0);
    return true;
}

/// "Z", "+08:00", "-0500", " UTC"; nothing taken when there is none.
std::optional<int> takeOffset(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    if ((ahead.take(u'Z') && ahead.endsWord())) {
        scanner = ahead;
        return 0;
    }
    ahead = scanner;
    ahead.skipBlanks();
    if (ahead.takeWord(QLatin1String("UTC")) || ahead.takeWord(QLatin1String("GMT"))) {
        scanner = ahead;
        return 0;
    }
    ahead = scanner;
    const int sign = ahead.peek() == u'-' ? -1 : 1;
    if (!ahead.take(u'+') && !ahead.take(u'-'))
        return std::nullopt;
    const qsizetype start = ahead.position();
    std::optional<int> hours = ahead.takeNumber(2, 2);
    std::optional<int> minutes = 0;
    if (hours && ahead.take(u':')) {
        minutes = ahead.takeNumber(2, 2);
    } else if (!hours) {
        ahead.moveTo(start);
        const std::optional<int> both = ahead.takeNumber(4, 4);
        if (!both)
            return std::nullopt;
        hours = *both / 100;
        minutes = *both % 100;
    } else {
        return std::nullopt; // "10:00-11" is a range
    }
    constexpr int kFarthest = 14;
    if (!minutes || *minutes >= kMinutesInHour || *hours > kFarthest)
        return std::nullopt;
    scanner = ahead;
    return sign * (*hours * kMinutesInHour + *minutes) * kSecondsInMinute;
}

/// "18:30", "6:30 pm", "18:30:00.5+08:00". Blanks round the first colon only where asked for.
std::optional<TimeMatch> colonTime(TextScanner scanner, bool blanksAllowed, std::optional<DayPart> part)
{
    const std::optional<int> written = scanner.takeNumber(1, 2);
    if (!written)
        return std::nullopt;
    if (blanksAllowed)
        scanner.skipBlanks();
    if (!scanner.take(u':'))
        return std::nullopt;
    if (blanksAllowed)
        scanner.skipBlanks();
    const std::optional<int> minute = scanner.takeNumber(2, 2);
    if (!minute || *minute >= kMinutesInHour)
        return std::nullopt;
    TimeMatch match;
    if (scanner.peek() == u':' && TextScanner::digit(scanner.peek(1))) {
        scanner.advance(1);
        const std::optional<int> second = scanner.takeNumber(2, 2);
        if (!second || *second >= kSecondsInMinute)
            return std::nullopt;
        match.time.hasSeconds = true;
        match.time.seconds = *second;
        constexpr int kFinest = 9;
        if ((scanner.peek() == u'.' || scanner.peek() == u',') && TextScanner::digit(scanner.peek(1))) {
            scanner.advance(1);
            if (!scanner.takeNumber(1, kFinest))
                return std::nullopt;
        }
    }
    int hour = *written;
    if (hour > kHoursInDay || (hour == kHoursInDay && *minute > 0) ||
        !applyHalfDay(takeHalfDay(scanner), hour))
        return std::nullopt;
    match.time.minutes = (part ? hourIn(*part, hour) : hour) * kMinutesInHour + *minute;
    match.time.utcOffsetSeconds = takeOffset(scanner);
    match.end = scanner.position();
    return match;
}

/// "6pm", "6 p.m."
std::optional<TimeMatch> halfDayTime(TextScanner scanner)
{
    const std::optional<int> written = scanner.takeNumber(1, 2);
    if (!written)
        return std::nullopt;
    const std::optional<HalfDay> half = takeHalfDay(scanner);
    int hour = *written;
    if (!half || !applyHalfDay(half, hour))
        return std::nullopt;
    TimeMatch match;
    match.time.minutes = hour * kMinutesInHour;
    match.end = scanner.position();
    return match;
}

/// The minutes behind "3点": 半, 一刻, 三刻, 二十, 05分; 0 when there are none.
int takeEastAsianMinutes(TextScanner& scanner)
{
    TextScanner ahead = scanner;
    ahead.skipBlanks();
    if (ahead.take(u'半')) {
        scanner = ahead;
        return kMinutesInHour / 2;
    }
    if (const std::optional<int> quarter = ahead.takeOneOf({u"一刻", u"三刻"})) {
        scanner = ahead;
        return *quarter == 0 ? kQuarter : 3 * kQuarter;
    }
    const std::optional<int> minute = EastAsianNumber::take(ahead);
    if (!minute || *minute >= kMinutesInHour)
        return 0;
    TextScanner sign = ahead;
    sign.skipBlanks();
    if (sign.take(u'分')) {
        scanner = sign;
        return *minute;
    }
    // "3点20" ends there; "3点2个人" does not hold minutes.
    constexpr int kFewestWithoutSign = 5;
    if (*minute < kFewestWithoutSign || ahead.peek().isLetter())
        return 0;
    scanner = ahead;
    return *minute;
}

/// "3点", "15時半", "八点一刻", with or without a part of the day before.
std::optional<TimeMatch> eastAsianTime(TextScanner scanner, std::optional<DayPart> part)
{
    const std::optional<int> hour = EastAsianNumber::take(scanner);
    if (!hour || *hour > kHoursInDay)
        return std::nullopt;
    scanner.skipBlanks();
    if (!scanner.takeOneOf({u"点", u"點", u"時", u"时"}))
        return std::nullopt;
    if (scanner.peek() == u'間' || scanner.peek() == u'间')
        return std::nullopt;
    scanner.takeOneOf({u"钟", u"鐘", u"整"});
    const int minute = takeEastAsianMinutes(scanner);
    TimeMatch match;
    match.time.minutes = (part ? hourIn(*part, *hour) : *hour) * kMinutesInHour + minute;
    match.end = scanner.position();
    return match;
}

std::optional<TimeMatch> withPart(TextScanner scanner)
{
    const std::optional<DayPart> part = takePart(scanner);
    if (!part)
        return std::nullopt;
    const qsizetype end = scanner.position();
    scanner.skipBlanks();
    if (const std::optional<TimeMatch> match = eastAsianTime(scanner, part))
        return match;
    if (const std::optional<TimeMatch> match = colonTime(scanner, true, part))
        return match;
    return TimeMatch{TimeGrammar::timeOf(*part), end};
}

std::optional<TimeMatch> englishTime(TextScanner scanner)
{
    const bool introduced = scanner.takeWord(QLatin1String("at")) || scanner.takeWord(QLatin1String("by")) ||
                            scanner.takeWord(QLatin1String("from")) || scanner.take(u'@');
    scanner.skipBlanks();
    if (introduced) {
        if (const std::optional<TimeMatch> match = colonTime(scanner, true, std::nullopt))
            return match;
        if (const std::optional<TimeMatch> match = halfDayTime(scanner))
            return match;
    }
    TextScanner ahead = scanner;
    if (const std::optional<DayPart> part = takeEnglishPart(ahead))
        return TimeMatch{TimeGrammar::timeOf(*part), ahead.position()};
    ahead = scanner;
    const std::optional<int> hour = ahead.takeNumber(1, 2);
    if (!hour || *hour >= kHoursInDay)
        return std::nullopt;
    const qsizetype end = ahead.position();
    ahead.skipBlanks();
    if (ahead.take(QStringView(u"o'clock")) || ahead.take(QStringView(u"o’clock")))
        return TimeMatch{{*hour * kMinutesInHour, 0, false, {}}, ahead.position()};
    if (introduced && scanner.at(end).endsNumber())
        return TimeMatch{{*hour * kMinutesInHour, 0, false, {}}, end};
    return std::nullopt;
}

} // namespace

std::optional<TimeMatch> TimeGrammar::at(const TextScanner& scanner)
{
    if (const std::optional<TimeMatch> match = colonTime(scanner, true, std::nullopt))
        return match;
    if (const std::optional<TimeMatch> match = halfDayTime(scanner))
        return match;
    if (const std::optional<TimeMatch> match = withPart(scanner))
        return match;
    if (const std::optional<TimeMatch> match = eastAsianTime(scanner, std::nullopt))
        return match;
    return englishTime(scanner);
}

std::optional<TimeMatch> TimeGrammar::unmistakableAt(const TextScanner& scanner)
{
    if (!scanner.beginsNumber())
        return std::nullopt;
    if (const std::optional<TimeMatch> match = colonTime(scanner, false, std::nullopt))
        return match;
    return halfDayTime(scanner);
}

TimeExpression TimeGrammar::timeOf(DayPart part)
{
    constexpr std::array kHours{5, 9, 12, 15, 18, 20, 24};
    return {kHours.at(static_cast<size_t>(part)) * kMinutesInHour, 0, false, {}};
}

} // namespace tessary
