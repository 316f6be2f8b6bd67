#pragma once

#include "platform/RunningApplication.h"

#include <qcoro/qcorotask.h>

#include <optional>

namespace tessary {

/// What came of asking the person for a window.
struct PickedWindow {
    enum class Outcome {
        Picked,
        Cancelled,
        NoApplication, ///< There is no window, or one that does not say whose it is.
        Unavailable,   ///< Another program holds the pointer or the keyboard.
    };
    Outcome outcome = Outcome::Cancelled;
    RunningApplication application; ///< When picked, with a bundle identifier.
};

/// Lets the person point at a window on the screen. Main thread only; never blocks.
class WindowPicker {
public:
    virtual ~WindowPicker() = default;
    /// Takes pointer and keyboard until a click, the Escape key, or `cancel`. A second request while one
    /// runs is cancelled at once.
    [[nodiscard]] virtual QCoro::Task<PickedWindow> pick() = 0;
    virtual void cancel() = 0;
};

} // namespace tessary
