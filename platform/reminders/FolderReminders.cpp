#include "platform/reminders/FolderReminders.h"

#include "base/AtomicFile.h"
#include "platform/reminders/ICalendarTask.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

bool isAllowed(const QString& folder, int access)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), access, AT_EACCESS) == 0;
}

bool isThere(const QString& folder)
{
    struct stat facts {};
    return ::stat(QFile::encodeName(folder).constData(), &facts) == 0 || errno != ENOENT;
}

ReminderAuthorization statusOf(const QString& folder)
{
    if (folder.isEmpty())
        return ReminderAuthorization::Restricted;
    if (!isThere(folder))
        return ReminderAuthorization::NotDetermined;
    if (!isAllowed(folder, W_OK | X_OK))
        return errno == EACCES ? ReminderAuthorization::Denied : ReminderAuthorization::Restricted;
    if (!QFileInfo(folder).isDir())
        return ReminderAuthorization::Restricted;
    return isAllowed(folder, R_OK) ? ReminderAuthorization::FullAccess : ReminderAuthorization::WriteOnly;
}

bool isGranted(ReminderAuthorization status)
{
    return status == ReminderAuthorization::FullAccess || status == ReminderAuthorization::WriteOnly;
}

ReminderStoreError writeFailed(const FileError& error)
{
    return ReminderStoreError(ReminderStoreError::Case::WriteFailed,
                              error.path() + QStringLiteral(": ") + error.localizedDescription());
}

/// With those above it, each for its owner only. @throws FileError.
void makeFolder(const QString& path)
{
    constexpr mode_t kOwnerOnly = 0700;
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), kOwnerOnly) == 0 || errno == EEXIST)
        return;
    if (errno == ENOENT) {
        makeFolder(QFileInfo(path).path());
        if (::mkdir(name.constData(), kOwnerOnly) == 0 || errno == EEXIST)
            return;
    }
    throw FileError::fromErrno(errno, path, FileError::Operation::Write);
}

/// How readers of such folders call the list, and in which colour they show it. What the person has made of
/// that stays.
void describeFolder(const QString& folder)
{
    const QString name = folder + QStringLiteral("/displayname");
    if (QFile::exists(name))
        return;
    writeFileAtomically(folder + QStringLiteral("/color"), "#5C8FF8", Durability::Process);
    writeFileAtomically(name, "Tessary", Durability::Process);
}

bool isRefused(FileError::Case which)
{
    return which == FileError::Case::WriteNoPermission || which == FileError::Case::WriteVolumeReadOnly;
}

/// @returns whether reminders can be written now.
bool prepareFolder(const QString& folder)
{
    if (folder.isEmpty())
        return false;
    try {
        makeFolder(folder);
        describeFolder(folder);
    } catch (const FileError& error) {
        if (isRefused(error.which()))
            return false;
        throw writeFailed(error);
    }
    return isGranted(statusOf(folder));
}

void writeTask(const NewReminder& reminder, Claim& claim)
{
    const QString uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const ICalendarTask task(reminder, uid, QDateTime::currentDateTimeUtc());
    const QString path = reminder.list + QLatin1Char('/') + uid + QStringLiteral(".ics");
    try {
        writeFileAtomically(path, task.document(), Durability::PowerCut);
        if (!claim.take())
            removeFile(path);
    } catch (const FileError& error) {
        throw writeFailed(error);
    }
}

} // namespace

FolderReminders::FolderReminders(QString folder, std::chrono::milliseconds deadline)
    : m_folder(std::move(folder)),
      m_deadline(deadline),
      m_lane(QStringLiteral("tessary-remind"))
{
}

QCoro::Task<ReminderAuthorization> FolderReminders::authorizationStatus()
{
    auto looking = m_lane.run<ReminderAuthorization>(
        QDeadlineTimer(m_deadline), [folder = m_folder](NoState&, Claim&) { return statusOf(folder); });
    co_return co_await looking;
}

QCoro::Task<bool> FolderReminders::requestFullAccess()
{
    auto making = m_lane.run<bool>(QDeadlineTimer(m_deadline),
                                   [folder = m_folder](NoState&, Claim&) { return prepareFolder(folder); });
    co_return co_await making;
}

QCoro::Task<std::optional<QString>> FolderReminders::defaultList()
{
    const ReminderAuthorization status = co_await authorizationStatus();
    co_return isGranted(status) ? std::optional(m_folder) : std::nullopt;
}

QCoro::Task<> FolderReminders::save(NewReminder reminder)
{
    auto writing = m_lane.run<void>(QDeadlineTimer(m_deadline),
                                    [reminder](NoState&, Claim& claim) { writeTask(reminder, claim); });
    co_await writing;
}

} // namespace tessary
