#pragma once

#include "platform/RunningApplication.h"
#include "platform/x11/ServerTime.h"

#include <functional>
#include <vector>

namespace tessary {

/// Asks the window manager to bring a window to the front. On the event loop's thread, after construction.
class WindowActivation {
public:
    explicit WindowActivation(X11EventLoop& loop);

    /// @param done called once: whether there was a window to ask for and a window manager to ask. What it
    ///             does about it shows later; but as long as a window of ours is the active one, which may be
    ///             hidden already, it has not come to it yet, and is waited for up to 2 s.
    void request(const RunningApplication& application, std::function<void(bool)> done);
    /// The same for any window, ours for one, and without an answer.
    void request(xcb_window_t window);
    [[nodiscard]] bool isActive(const RunningApplication& application);
    /// Every event of the connection; others' are ignored.
    void handleEvent(const xcb_generic_event_t& event);
    void connectionLost();

private:
    [[nodiscard]] bool hasWindowManager();
    [[nodiscard]] bool isOursActive();
    void awaitManager(std::function<void(bool)> done);
    void answerWaiting();
    void ask(xcb_window_t window, xcb_timestamp_t time);

    X11EventLoop& m_loop;
    ServerTime m_time;
    std::vector<std::function<void(bool)>>
        m_waiting; ///< For the window manager to take the keyboard from us.
    X11EventLoop::TimerId m_patience = 0;
};

} // namespace tessary
