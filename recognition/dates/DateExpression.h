#pragma once

#include <QDate>

#include <chrono>
#include <optional>
#include <variant>

namespace tessary {

/// A day as texts name it, not yet one of the calendar.
struct DayExpression {
    struct OfCalendar { ///< "March 5", "2026年3月5日". Without a year the next such day, today included.
        std::optional<int> year;
        int month = 1;
        int day = 1;
    };
    struct OfMonth { ///< "5号", "下月5号". Without an offset the next such day, today included.
        std::optional<int> monthsFromNow;
        int day = 1;
    };
    struct OfYear { ///< "明年3月5日".
        int yearsFromNow = 0;
        int month = 1;
        int day = 1;
    };
    struct OfWeek { ///< "周五", "next Friday". Without an offset the next one that lies ahead.
        std::optional<int> weeksFromNow;
        int weekday = 1; ///< 1 is Monday, with which weeks begin.
    };
    struct FromToday { ///< "后天", "in 2 weeks".
        int days = 0;
        int months = 0;
        bool keepsTime = false; ///< The time of day is that of now where the text has none.
    };
    struct FromNow { ///< "in 2 hours": with its time of day.
        std::chrono::minutes span{0};
    };

    std::variant<OfCalendar, OfMonth, OfYear, OfWeek, FromToday, FromNow> value;
};

/// A time of day as texts name it.
struct TimeExpression {
    int minutes = 0; ///< Since the day began; may lie in the next day.
    int seconds = 0;
    bool hasSeconds = false;
    std::optional<int> utcOffsetSeconds; ///< Absent: the calendar's time zone.
};

/// What a grammar found.
struct DayMatch {
    DayExpression day;
    std::optional<TimeExpression> time; ///< Where the word holds one, such as "今晚".
    bool needsTime = false;             ///< Too common, or too ambiguous, to be a date without a time.
    qsizetype end = 0;                  ///< Position behind it.
};

struct TimeMatch {
    TimeExpression time;
    qsizetype end = 0;
};

} // namespace tessary
