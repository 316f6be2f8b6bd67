#include "platform/reminders/DesktopTasks.h"

#include "platform/reminders/ICalendarTask.h"

#include <QFileInfo>
#include <QUuid>

namespace tessary {

DesktopTasks::DesktopTasks(QString module, std::chrono::milliseconds deadline, const QString& busAddress,
                           std::chrono::milliseconds rest)
    : m_module(std::move(module)),
      m_deadline(deadline),
      m_service(busAddress),
      m_lane(QStringLiteral("tessary-desktop"))
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(rest);
    QObject::connect(&m_rest, &QTimer::timeout, [this] {
        if (!m_lane.rest())
            m_rest.start();
    });
}

QCoro::Task<bool> DesktopTasks::isReachable()
{
    if (!QFileInfo::exists(m_module)) // beside our own program: no disk that hangs
        co_return false;
    const bool isReachable = co_await m_service.isReachable();
    co_return isReachable;
}

QCoro::Task<DesktopTasks::Finding> DesktopTasks::defaultList()
{
    const QDeadlineTimer deadline(m_deadline);
    if (!QFileInfo::exists(m_module))
        co_return Finding{};
    const TaskService::Answer answer = co_await m_service.wake(deadline);
    if (answer == TaskService::Answer::Silent)
        throw ReminderStoreError(ReminderStoreError::Case::TimedOut);
    if (answer == TaskService::Answer::Refused)
        co_return Finding{Finding::Kind::Refused, {}};
    if (answer == TaskService::Answer::Absent)
        co_return Finding{};
    m_rest.start();
    auto looking = m_lane.run<Finding>(deadline, [module = m_module](TaskModuleSession& session, Claim&) {
        return session.defaultList(module);
    });
    co_return co_await looking;
}

QCoro::Task<> DesktopTasks::save(NewReminder reminder)
{
    m_rest.start();
    auto saving = m_lane.run<void>(
        QDeadlineTimer(m_deadline), [module = m_module, reminder](TaskModuleSession& session, Claim& claim) {
            const QString uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
            const ICalendarTask task(reminder, uid, QDateTime::currentDateTimeUtc());
            session.add(module, reminder.list, task.component(), claim);
        });
    co_await saving;
}

} // namespace tessary
