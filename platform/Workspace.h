#pragma once

#include "platform/RunningApplication.h"

#include <QObject>

#include <qcoro/qcorotask.h>

namespace tessary {

/// Which program is in front, and when that changes. Main thread only; never blocks.
class Workspace : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The program of the active window as last heard of; none when no window is active.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;
    /// Asks for that window to come to the front and have the keyboard; it may take a while to.
    /// @returns false when that was refused: the window or its program is gone, or nobody manages windows.
    [[nodiscard]] virtual QCoro::Task<bool> requestActivation(RunningApplication application) = 0;
    /// Whether that window, or another one of its program, is in front now and has the keyboard.
    [[nodiscard]] virtual QCoro::Task<bool> isActive(RunningApplication application) = 0;

Q_SIGNALS:
    /// Another window became active. Not emitted when none is.
    void applicationActivated(const tessary::RunningApplication& application);
    /// The machine woke up from sleep.
    void didWake();
};

} // namespace tessary
