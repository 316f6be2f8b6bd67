#pragma once

#include "platform/RunningApplication.h"

#include <QObject>

namespace tessary {

/// Which program is in front, and when that changes. Main thread only; never blocks.
class Workspace : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The program of the active window as last heard of; none when no window is active.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;

Q_SIGNALS:
    /// Another window became active. Not emitted when none is.
    void applicationActivated(const tessary::RunningApplication& application);
    /// The machine woke up from sleep.
    void didWake();
};

} // namespace tessary
