#pragma once

#include <QtGlobal>

#include <qcoro/qcorotask.h>

#include <functional>
#include <optional>

namespace tessary {

/// What the system hands back with a pressed combination.
struct HotKeyIdentifier {
    quint32 signature = 0;
    quint32 id = 0;

    friend bool operator==(const HotKeyIdentifier&, const HotKeyIdentifier&) = default;
};

/// Key combinations that reach us whatever program is in front. Main thread only; never blocks.
class GlobalHotKeyFacility {
public:
    using Reference = quint64;

    virtual ~GlobalHotKeyFacility() = default;
    /// Receives each press, on the main thread.
    virtual void setHandler(std::function<void(HotKeyIdentifier)> handler) = 0;
    /// @param keyCode classic virtual key code. @param modifiers classic mask: command 256, shift 512,
    ///        option 2048, control 4096.
    /// @returns nothing when the combination is taken, by another program or by ourselves, or has no key.
    [[nodiscard]] virtual QCoro::Task<std::optional<Reference>>
    registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyIdentifier identifier) = 0;
    /// Keys that are typed after a press are held back until this is called, half a second at most, and then
    /// go to the window that has the focus: what is typed while a window is still coming up is not lost.
    virtual void releaseKeyboard() = 0;
    /// The same as soon as that window has the focus.
    virtual void releaseKeyboardTo(quintptr window) = 0;
    /// Takes effect before a later registration is tried.
    virtual void unregister(Reference reference) = 0;
};

} // namespace tessary
