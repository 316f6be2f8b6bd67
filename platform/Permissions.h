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

/// Probes what the session lets us do. Main thread only; never blocks.
class Permissions {
public:
    virtual ~Permissions() = default;
    [[nodiscard]] virtual QCoro::Task<PermissionState> probe() = 0;
};

} // namespace tessary
