#pragma once

#include <qcoro/qcorotask.h>

namespace tessary {

/// What the session lets us do.
struct PermissionState {
    bool screenRecording = false; ///< The screen can be read.
    bool accessibility = false;   ///< Input can be synthesised.
    bool reminders = false;       ///< Tasks can be written.

    friend bool operator==(const PermissionState&, const PermissionState&) = default;
};

/// What the session lets us do, and asking for more. Main thread only; never blocks.
class Permissions {
public:
    virtual ~Permissions() = default;
    [[nodiscard]] virtual QCoro::Task<PermissionState> probe() = 0;
    /// Whether the screen can be read, without asking for it.
    [[nodiscard]] virtual QCoro::Task<bool> hasScreenRecording() = 0;
    /// Asks for the permission; where sessions do not grant any, looks again. @returns whether it is there.
    [[nodiscard]] virtual QCoro::Task<bool> requestScreenRecording() = 0;
    /// The same. The session may ask the person, whose answer comes later.
    [[nodiscard]] virtual QCoro::Task<bool> requestAccessibility() = 0;
    /// The same; the service that keeps tasks is started if need be. @throws ReminderStoreError.
    [[nodiscard]] virtual QCoro::Task<bool> requestReminders() = 0;
};

} // namespace tessary
