#pragma once

#include "platform/x11/X11EventLoop.h"

#include <functional>
#include <vector>

namespace tessary {

/// Asks the session's clipboard manager to keep what we own on CLIPBOARD, and waits for its word. It fetches
/// the contents as any other program does. On the event loop's thread.
class ManagerHandover {
public:
    using Done = std::function<void(bool)>;

    ManagerHandover(X11EventLoop& loop, xcb_window_t owner, std::chrono::milliseconds patience,
                    std::chrono::milliseconds longest);

    /// @param targets what the manager should keep. @param done called once: whether the manager has it.
    void start(const std::vector<xcb_atom_t>& targets, xcb_timestamp_t time, Done done);
    /// Every event of the connection; others' are ignored.
    void handleEvent(const xcb_generic_event_t& event);
    /// The manager is at work: it gets more time.
    void noteProgress();
    /// Nobody waits for a manager any more.
    void end(bool isKept);

private:
    void expectProgress();

    X11EventLoop& m_loop;
    xcb_window_t m_owner;
    std::chrono::milliseconds m_patience;
    std::chrono::milliseconds m_longest;
    Done m_done;
    X11EventLoop::TimePoint m_end;
    X11EventLoop::TimerId m_timer = 0;
};

} // namespace tessary
