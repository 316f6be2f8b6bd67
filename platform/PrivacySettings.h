#pragma once

#include <QString>

#include <qcoro/qcorotask.h>

namespace tessary {

/// The desktop's own pages on what programs may do. Main thread only; never blocks.
class PrivacySettings {
public:
    virtual ~PrivacySettings() = default;
    /// @param anchor names the page: "Privacy_ScreenCapture", "Privacy_Accessibility" or "Privacy_Reminders".
    /// @returns false when this desktop has no such page; nothing happens then.
    [[nodiscard]] virtual QCoro::Task<bool> open(QString anchor) = 0;
};

} // namespace tessary
