#pragma once

#include <QtGlobal>

#include <optional>

namespace tessary {

/// The key of a classic virtual key code by its position on the keyboard, as the key code of X11 and XKB
/// (8 more than the kernel's). Nothing for codes of no key, of modifiers, and of keys that PCs lack.
[[nodiscard]] std::optional<quint8> keycodeOfVirtualKey(quint32 virtualKey);

/// The other way round: what a native scan code of a Qt key event on X11 or Wayland is called.
[[nodiscard]] std::optional<quint32> virtualKeyOfKeycode(quint32 keycode);

} // namespace tessary
