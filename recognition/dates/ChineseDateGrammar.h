#pragma once

#include "recognition/dates/DateExpression.h"
#include "recognition/dates/TextScanner.h"

namespace tessary {

/// Days in Chinese: "3月5日", "二〇二六年三月五号", "明年3月5日", "下月5号", "下周五", "后天", "今晚",
/// "三天后".
struct ChineseDateGrammar {
    [[nodiscard]] static std::optional<DayMatch> at(const TextScanner& scanner);
};

} // namespace tessary
