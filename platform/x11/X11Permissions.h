#pragma once

#include "base/SerialLane.h"
#include "platform/Permissions.h"
#include "platform/ReminderStore.h"

namespace tessary {

/// What an X11 session lets every program do: read the screen, and type when the XTEST extension answers.
/// Nobody grants or refuses that, so asking for it is looking again. Each probe asks the server over a
/// short-lived connection, on a thread of its own.
class X11Permissions : public Permissions {
public:
    /// @param reminders are asked themselves; without them no tasks can be written.
    explicit X11Permissions(ReminderStore* reminders = nullptr);

    [[nodiscard]] QCoro::Task<PermissionState> probe() override;
    [[nodiscard]] QCoro::Task<bool> hasScreenRecording() override;
    [[nodiscard]] QCoro::Task<bool> requestScreenRecording() override;
    [[nodiscard]] QCoro::Task<bool> requestAccessibility() override;
    [[nodiscard]] QCoro::Task<bool> requestReminders() override;

private:
    /// All but the reminders.
    [[nodiscard]] QCoro::Task<PermissionState> probeServer();
    [[nodiscard]] QCoro::Task<bool> canWriteReminders();

    ReminderStore* m_reminders;
    SerialLane m_lane;
};

} // namespace tessary
