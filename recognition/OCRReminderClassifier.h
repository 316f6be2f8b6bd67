#pragma once

#include "recognition/OCRReminderDraft.h"

namespace tessary {

/// Tells whether a text reads as a task. Any thread.
struct OCRReminderClassifier {
    /// @returns nothing when the text is blank, or holds neither a date nor a word that tasks have.
    [[nodiscard]] static std::optional<OCRReminderDraft> draft(const QString& text, Date now);
    /// The first date or date-time in the text, else what its relative words mean; in local time.
    [[nodiscard]] static std::optional<Date> detectDate(const QString& text, Date now);
};

} // namespace tessary
