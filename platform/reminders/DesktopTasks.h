#pragma once

#include "platform/linux/TaskService.h"
#include "platform/reminders/TaskModuleSession.h"

#include <QTimer>

namespace tessary {

/// The desktop's own tasks, kept by Evolution Data Server and reached through a loadable module, so that
/// nothing of it is needed where it is not installed. Main thread only; after a rest nothing is kept of it
/// but the module's code, and what its libraries keep for good.
class DesktopTasks {
public:
    using Finding = TaskModuleSession::Finding;

    /// @param module path of its file. @param deadline of each answer. @param busAddress of the bus that is
    /// asked who is there; empty means the session bus, which is the one that the module uses in any case.
    DesktopTasks(QString module, std::chrono::milliseconds deadline, const QString& busAddress,
                 std::chrono::milliseconds rest = std::chrono::seconds(30));

    /// Whether there seems to be one; starts nothing.
    [[nodiscard]] QCoro::Task<bool> isReachable();
    /// Starts the service if need be. @throws ReminderStoreError TimedOut.
    [[nodiscard]] QCoro::Task<Finding> defaultList();
    /// @throws ReminderStoreError.
    [[nodiscard]] QCoro::Task<> save(NewReminder reminder);
    /// Whether the service is connected.
    [[nodiscard]] bool isResting() const { return m_lane.isResting(); }

private:
    QString m_module;
    std::chrono::milliseconds m_deadline;
    TaskService m_service;
    DeadlineLane<TaskModuleSession> m_lane;
    QTimer m_rest;
};

} // namespace tessary
