#pragma once

#include "base/SerialLane.h"
#include "platform/Permissions.h"

namespace tessary {

/// What an X11 session lets every program do: read the screen, and type when the XTEST extension is there.
/// Each probe asks the server over a short-lived connection, on a thread of its own.
class X11Permissions : public Permissions {
public:
    X11Permissions() : m_lane(QStringLiteral("tessary-permits")) {}

    /// Reminders are false: no task store is connected to this session yet.
    [[nodiscard]] QCoro::Task<PermissionState> probe() override;

private:
    SerialLane m_lane;
};

} // namespace tessary
