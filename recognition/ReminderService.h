#pragma once

#include "platform/ReminderStore.h"
#include "recognition/OCRReminderDraft.h"

namespace tessary {

/// Makes reminders of drafts, in the person's list for new ones. Main thread only.
class ReminderService {
public:
    class Error : public tessary::Error {
    public:
        enum class Case {
            Denied,            ///< Access was refused.
            NoDefaultCalendar, ///< There is no list for new reminders.
        };
        explicit Error(Case which) : m_case(which) {}

        [[nodiscard]] Case which() const noexcept { return m_case; }
        [[nodiscard]] QString localizedDescription() const override;

    private:
        Case m_case;
    };

    /// @param store outlives this.
    explicit ReminderService(ReminderStore& store) : m_store(store) {}

    /// Asks for access where there is none yet. Each call makes a reminder of its own, also while another
    /// is under way; one that fails leaves nothing. @throws Error; what the store throws, unchanged.
    [[nodiscard]] QCoro::Task<> create(OCRReminderDraft draft);

private:
    [[nodiscard]] QCoro::Task<bool> isAccessGranted();

    ReminderStore& m_store;
};

} // namespace tessary
