#pragma once

#include "platform/Permissions.h"
#include "platform/ReminderStore.h"
#include "platform/testing/NextTurn.h"

#include <QStringList>

#include <optional>

namespace tessary::testing {

/// What a test allows. Answers come after a turn of the event loop, with the state at the time of asking.
class FakePermissions : public Permissions {
public:
    [[nodiscard]] QCoro::Task<PermissionState> probe() override
    {
        ++m_probes;
        const PermissionState state = m_state;
        co_await NextTurn();
        co_return state;
    }
    [[nodiscard]] QCoro::Task<bool> hasScreenRecording() override
    {
        co_await NextTurn();
        co_return m_state.screenRecording;
    }
    [[nodiscard]] QCoro::Task<bool> requestScreenRecording() override
    {
        co_return co_await request(QStringLiteral("screen"), &PermissionState::screenRecording);
    }
    [[nodiscard]] QCoro::Task<bool> requestAccessibility() override
    {
        co_return co_await request(QStringLiteral("accessibility"), &PermissionState::accessibility);
    }
    [[nodiscard]] QCoro::Task<bool> requestReminders() override
    {
        co_return co_await request(QStringLiteral("reminders"), &PermissionState::reminders);
    }

    void setState(PermissionState state) { m_state = state; }
    /// Requests are granted from now on.
    void grantRequests() { m_grants = true; }
    void failRequestsWith(ReminderStoreError::Case failure) { m_failure = failure; }
    [[nodiscard]] int probes() const { return m_probes; }
    [[nodiscard]] const QStringList& requests() const { return m_requests; }

private:
    QCoro::Task<bool> request(QString name, bool PermissionState::*permission)
    {
        m_requests.append(name);
        co_await NextTurn();
        if (m_failure)
            throw ReminderStoreError(*m_failure);
        if (m_grants)
            m_state.*permission = true;
        co_return m_state.*permission;
    }

    PermissionState m_state;
    bool m_grants = false;
    std::optional<ReminderStoreError::Case> m_failure;
    int m_probes = 0;
    QStringList m_requests;
};

} // namespace tessary::testing
