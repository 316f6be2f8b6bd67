#pragma once

#include "platform/StandardFolders.h"
#include "platform/reminders/DesktopTasks.h"
#include "platform/reminders/FolderReminders.h"

namespace tessary {

/// Reminders in the desktop's own tasks where it keeps some, else as files in Tessary/Reminders.
///
/// Which of the two is settled when access is asked for, or a list for the first time, and stays so as long
/// as we run, unless access is asked for again. That there was a first use is remembered by that folder,
/// which is made in either case.
class DesktopReminders : public ReminderStore {
public:
    struct Options {
        QString busAddress; ///< Empty means the session bus.
        QString module = usualModule();
        std::chrono::milliseconds deadline{8000};
    };

    explicit DesktopReminders(const StandardFolders& folders, const QString& busAddress = {});
    DesktopReminders(const StandardFolders& folders, const Options& options);

    /// The module beside our own executable, else in ../libexec/tessary from there.
    [[nodiscard]] static QString usualModule();

    /// Asks the bus at most who is there; the service is not started.
    [[nodiscard]] QCoro::Task<ReminderAuthorization> authorizationStatus() override;
    [[nodiscard]] QCoro::Task<bool> requestFullAccess() override;
    [[nodiscard]] QCoro::Task<std::optional<QString>> defaultList() override;
    [[nodiscard]] QCoro::Task<> save(NewReminder reminder) override;

private:
    enum class Choice { None, Desktop, Folder, Refused };

    /// Looks at the desktop's tasks and chooses. @throws ReminderStoreError; nothing is chosen then.
    [[nodiscard]] QCoro::Task<DesktopTasks::Finding> choose();

    FolderReminders m_folder;
    DesktopTasks m_tasks;
    Choice m_choice = Choice::None;
};

} // namespace tessary
