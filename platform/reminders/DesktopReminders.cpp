#include "platform/reminders/DesktopReminders.h"

#include "base/FileError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcReminders, "tessary.reminders")

namespace tessary {
namespace {

QString reminderFolder(const StandardFolders& folders)
{
    try {
        return folders.applicationSupport() + QStringLiteral("/Tessary/Reminders");
    } catch (const FileError&) {
        return {}; // a person without a home
    }
}

} // namespace

DesktopReminders::DesktopReminders(const StandardFolders& folders, const QString& busAddress)
    : DesktopReminders(folders, Options{.busAddress = busAddress})
{
}

DesktopReminders::DesktopReminders(const StandardFolders& folders, const Options& options)
    : m_folder(reminderFolder(folders), options.deadline),
      m_tasks(options.module, options.deadline, options.busAddress)
{
}

QString DesktopReminders::usualModule()
{
    const QString name = QStringLiteral("tessary-reminders.so");
    const QDir folder(QCoreApplication::applicationDirPath());
    if (folder.exists(name))
        return folder.filePath(name);
    return QDir::cleanPath(folder.filePath(QStringLiteral("../libexec/tessary/") + name));
}

QCoro::Task<ReminderAuthorization> DesktopReminders::authorizationStatus()
{
    if (m_choice == Choice::Refused)
        co_return ReminderAuthorization::Denied;
    if (m_choice != Choice::Desktop) {
        const ReminderAuthorization status = co_await m_folder.authorizationStatus();
        if (m_choice == Choice::Folder || status == ReminderAuthorization::NotDetermined)
            co_return status;
        const bool isDesktop = co_await m_tasks.isReachable();
        co_return isDesktop ? ReminderAuthorization::FullAccess : status;
    }
    const bool isThere = co_await m_tasks.isReachable();
    co_return isThere ? ReminderAuthorization::FullAccess : ReminderAuthorization::Restricted;
}

QCoro::Task<bool> DesktopReminders::requestFullAccess()
{
    const DesktopTasks::Finding finding = co_await choose();
    bool isFolderThere = false;
    try {
        isFolderThere = co_await m_folder.requestFullAccess();
    } catch (const ReminderStoreError& error) {
        if (m_choice == Choice::Folder)
            throw;
        qCInfo(lcReminders, "the first use is not remembered: %s", qUtf8Printable(error.detail()));
    }
    co_return finding.kind == DesktopTasks::Finding::Kind::Found ||
        (finding.kind != DesktopTasks::Finding::Kind::Refused && isFolderThere);
}

QCoro::Task<std::optional<QString>> DesktopReminders::defaultList()
{
    if (m_choice != Choice::Folder) {
        DesktopTasks::Finding finding;
        if (m_choice == Choice::None)
            finding = co_await choose();
        else
            finding = co_await m_tasks.defaultList();
        if (finding.kind == DesktopTasks::Finding::Kind::Found)
            co_return finding.list;
        if (m_choice == Choice::Desktop && finding.kind == DesktopTasks::Finding::Kind::Absent)
            throw ReminderStoreError(ReminderStoreError::Case::Unavailable);
    }
    if (m_choice != Choice::Folder)
        co_return std::nullopt;
    const std::optional<QString> list = co_await m_folder.defaultList();
    co_return list;
}

QCoro::Task<> DesktopReminders::save(NewReminder reminder)
{
    if (reminder.list == m_folder.folder())
        co_await m_folder.save(reminder);
    else
        co_await m_tasks.save(reminder);
}

QCoro::Task<DesktopTasks::Finding> DesktopReminders::choose()
{
    const DesktopTasks::Finding finding = co_await m_tasks.defaultList();
    switch (finding.kind) {
    case DesktopTasks::Finding::Kind::Found:
        m_choice = Choice::Desktop;
        break;
    case DesktopTasks::Finding::Kind::Refused:
        m_choice = Choice::Refused;
        break;
    case DesktopTasks::Finding::Kind::NoList:
    case DesktopTasks::Finding::Kind::Absent:
        m_choice = Choice::Folder;
        break;
    }
    co_return finding;
}

} // namespace tessary
