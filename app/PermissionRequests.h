#pragma once

#include "platform/Permissions.h"

#include <QObject>

namespace tessary {

class FlowSet;
class SystemIntegrationService;

/// Knows what the session lets us do, and asks for what it does not: the actions behind the settings window's
/// buttons. Main thread only; each returns at once and goes on in the flows.
class PermissionRequests : public QObject {
    Q_OBJECT
public:
    PermissionRequests(Permissions& permissions, SystemIntegrationService& integration, FlowSet& flows);

    /// As last heard of; nothing is granted before the first answer.
    [[nodiscard]] const PermissionState& state() const { return m_state; }

    void refresh();
    /// Asks for it if it is missing, and leads to the desktop's page unless that grants it.
    void askForScreenRecording();
    /// Asks for it if it is missing, else leads to the desktop's page.
    void askForAccessibility();
    /// The same.
    void askForReminders();
    /// Asks for access to reminders; a failure is told by `failed`.
    void requestReminderPermission();

Q_SIGNALS:
    void changed();
    /// @param message the sentence for the person.
    void failed(const QString& message);

private:
    QCoro::Task<> update();
    QCoro::Task<> recordScreen();
    QCoro::Task<> synthesiseInput();
    QCoro::Task<> writeReminders();
    QCoro::Task<> openPage(QString anchor);

    Permissions& m_permissions;
    SystemIntegrationService& m_integration;
    FlowSet& m_flows;
    PermissionState m_state;
    quint64 m_lastQuestion = 0; // a slow old answer must not replace a newer one
};

} // namespace tessary
