#pragma once

#include "platform/reminders/DeadlineLane.h"

namespace tessary {

/// Reminders as iCalendar files in a folder of the person's own, one task a file, as programs that read
/// vdir folders expect. Making the folder is the first use, so its being there remembers that.
class FolderReminders : public ReminderStore {
public:
    /// @param folder to be made by the first request; also the identifier of its one list. Empty means that
    /// there is no place for it.
    explicit FolderReminders(QString folder, std::chrono::milliseconds deadline);

    [[nodiscard]] const QString& folder() const { return m_folder; }

    /// Restricted where nothing can be written whoever it is: a read-only disk, no home. WriteOnly where the
    /// folder cannot be read.
    [[nodiscard]] QCoro::Task<ReminderAuthorization> authorizationStatus() override;
    /// Makes the folder.
    [[nodiscard]] QCoro::Task<bool> requestFullAccess() override;
    [[nodiscard]] QCoro::Task<std::optional<QString>> defaultList() override;
    [[nodiscard]] QCoro::Task<> save(NewReminder reminder) override;

private:
    struct NoState {};

    QString m_folder;
    std::chrono::milliseconds m_deadline;
    DeadlineLane<NoState> m_lane;
};

} // namespace tessary
