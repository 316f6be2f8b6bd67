#pragma once

#include "platform/RunningApplication.h"

#include <qcoro/qcorotask.h>

#include <optional>

namespace tessary {

/// The keys that paste. Which ones do depends on the program and on the keyboard's layout.
enum class PasteKeystroke {
    ControlV,
    ShiftInsert, ///< In terminals it inserts the selection rather than the clipboard.
};

/// Types in the person's stead. Main thread only; never blocks.
class KeystrokeSender {
public:
    virtual ~KeystrokeSender() = default;
    /// What pastes in that program with the layout that is active now; nothing when no key does, or when
    /// this session lets nobody type.
    [[nodiscard]] virtual QCoro::Task<std::optional<PasteKeystroke>>
    pasteKeystroke(RunningApplication target) = 0;
    /// Presses and releases the keys, whatever modifiers the person holds and whatever locks are on.
    /// @returns false when nothing was typed, because the keyboard is not in that program's window any more,
    ///          or for the reasons above.
    [[nodiscard]] virtual QCoro::Task<bool> send(PasteKeystroke keystroke, RunningApplication target) = 0;
};

} // namespace tessary
