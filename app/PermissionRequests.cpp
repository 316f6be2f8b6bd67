#include "app/PermissionRequests.h"

#include "app/SystemIntegrationService.h"
#include "base/Error.h"
#include "base/FlowSet.h"

namespace tessary {

PermissionRequests::PermissionRequests(Permissions& permissions, SystemIntegrationService& integration,
                                       FlowSet& flows)
    : m_permissions(permissions),
      m_integration(integration),
      m_flows(flows)
{
}

void PermissionRequests::refresh()
{
    m_flows.add(update());
}

QCoro::Task<> PermissionRequests::update()
{
    const quint64 question = ++m_lastQuestion;
    const PermissionState state = co_await m_permissions.probe();
    if (question != m_lastQuestion || state == m_state)
        co_return;
    m_state = state;
    Q_EMIT changed();
}

void PermissionRequests::askForScreenRecording()
{
    m_flows.add(recordScreen());
}

QCoro::Task<> PermissionRequests::recordScreen()
{
    const PermissionState now = co_await m_permissions.probe();
    bool isGranted = false;
    if (!now.screenRecording)
        isGranted = co_await m_permissions.requestScreenRecording();
    if (!isGranted)
        co_await openPage(QStringLiteral("Privacy_ScreenCapture"));
    co_await update();
}

void PermissionRequests::askForAccessibility()
{
    if (m_state.accessibility)
        m_flows.add(openPage(QStringLiteral("Privacy_Accessibility")));
    else
        m_flows.add(synthesiseInput());
}

QCoro::Task<> PermissionRequests::synthesiseInput()
{
    co_await m_permissions.requestAccessibility();
    co_await update();
}

void PermissionRequests::askForReminders()
{
    if (m_state.reminders)
        m_flows.add(openPage(QStringLiteral("Privacy_Reminders")));
    else
        requestReminderPermission();
}

void PermissionRequests::requestReminderPermission()
{
    m_flows.add(writeReminders());
}

QCoro::Task<> PermissionRequests::writeReminders()
{
    try {
        co_await m_permissions.requestReminders();
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("无法申请提醒事项权限：") + localizedDescription(error));
        co_return;
    }
    co_await update();
}

QCoro::Task<> PermissionRequests::openPage(QString anchor)
{
    co_await m_integration.openPrivacySettings(anchor);
}

} // namespace tessary
