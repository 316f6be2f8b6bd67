#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

namespace tessary {

/// The part of a day that texts name, and what it means without a clock time.
enum class DayPart {
    Dawn,      ///< 5:00
    Morning,   ///< 9:00
    Noon,      ///< 12:00
    Afternoon, ///< 15:00
    Dusk,      ///< 18:00
    Evening,   ///< 20:00
    Midnight,  ///< The end of the day.
};

/// Times of day: "18:30", "6pm", "at noon", "下午3点半", "晚上八点一刻", "午後3時", "上午".
struct TimeGrammar {
    /// Any of them, at the scanner's position.
    [[nodiscard]] static std::optional<TimeMatch> at(const TextScanner& scanner);
    /// Those that cannot be anything else: a clock time with a colon, or with am or pm.
    [[nodiscard]] static std::optional<TimeMatch> unmistakableAt(const TextScanner& scanner);
    [[nodiscard]] static TimeExpression timeOf(DayPart part);
};

} // namespace tessary
