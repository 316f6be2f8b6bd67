#pragma once

#include "platform/x11/X11EventLoop.h"

#include <deque>
#include <functional>

namespace tessary {

/// Asks the server for its time, without which it grants no selection and window managers no focus. The
/// server tells it with the change of a property. On the event loop's thread.
class ServerTime {
public:
    /// @param window of our own connection, whose property changes come to us.
    ServerTime(X11EventLoop& loop, xcb_window_t window);

    /// Calls back in the order asked; with XCB_CURRENT_TIME once the connection is lost.
    void request(std::function<void(xcb_timestamp_t)> receiver);
    /// Every event of the connection; others' are ignored.
    void handleEvent(const xcb_generic_event_t& event);
    void connectionLost();

private:
    X11EventLoop& m_loop;
    xcb_window_t m_window;
    std::deque<std::function<void(xcb_timestamp_t)>> m_waiting;
};

/// A window that is never shown, with its property changes selected.
[[nodiscard]] xcb_window_t createHiddenWindow(const X11EventLoop& loop);

} // namespace tessary
