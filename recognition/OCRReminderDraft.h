#pragma once

#include "base/Date.h"

#include <QString>

#include <optional>

namespace tessary {

/// What a text would be as a reminder.
struct OCRReminderDraft {
    QString title; ///< Its first line that is not blank, trimmed; never empty.
    QString notes; ///< The whole text as it is.
    std::optional<Date> dueDate;

    friend bool operator==(const OCRReminderDraft&, const OCRReminderDraft&) = default;
};

} // namespace tessary
