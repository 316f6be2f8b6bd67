#pragma once

#include "platform/RunningApplication.h"
#include "platform/x11/X11EventLoop.h"

namespace tessary {

// Each asks the server and waits for it: on the event loop's thread.

/// The window that the window manager calls active; none when it calls none so.
[[nodiscard]] xcb_window_t activeWindow(X11EventLoop& loop);

/// The process of that window; 0 when it names none, or one of another machine.
[[nodiscard]] qint64 processOf(X11EventLoop& loop, xcb_window_t window);

/// Whether the window is still there and still that program's: numbers of windows are used again.
[[nodiscard]] bool isWindowOf(X11EventLoop& loop, const RunningApplication& application);

/// Whether keys go to that window, or to one inside it.
[[nodiscard]] bool hasFocus(X11EventLoop& loop, xcb_window_t window);

/// Whether that window, or another one of its process, is active and has the keyboard.
[[nodiscard]] bool hasKeyboard(X11EventLoop& loop, const RunningApplication& application);

} // namespace tessary
