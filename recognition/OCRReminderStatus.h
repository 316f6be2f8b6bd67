#pragma once

#include "recognition/OCRReminderDraft.h"

#include <variant>

namespace tessary {

/// How a recognised text and the person's reminders stand.
struct OCRReminderStatus {
    struct Ready { ///< It reads as a task, and there is no reminder of it yet.
        OCRReminderDraft draft;
        friend bool operator==(const Ready&, const Ready&) = default;
    };
    struct Created {
        friend bool operator==(const Created&, const Created&) = default;
    };
    struct Failed { ///< The reminder could not be created.
        QString message;
        friend bool operator==(const Failed&, const Failed&) = default;
    };
    struct NotATask {
        friend bool operator==(const NotATask&, const NotATask&) = default;
    };

    std::variant<Ready, Created, Failed, NotATask> value = NotATask{};

    /// The sentence in the window's footer.
    [[nodiscard]] QString text() const;
    /// Whether the person may ask for a reminder.
    [[nodiscard]] bool offersReminder() const
    {
        return std::holds_alternative<Ready>(value) || std::holds_alternative<Failed>(value);
    }

    friend bool operator==(const OCRReminderStatus&, const OCRReminderStatus&) = default;
};

} // namespace tessary
