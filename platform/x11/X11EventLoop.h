#pragma once

#include "platform/x11/AtomCache.h"
#include "platform/x11/DeadlineQueue.h"
#include "platform/x11/X11Error.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

/// An X connection of its own, served by a thread of its own: events in, posted work in, nothing else.
///
/// Everything that may wait for the server happens there. The thread sleeps without wake-ups while no
/// event, post or deadline is due, and the connection is flushed before it sleeps. An owner declares the
/// loop as its last member, adds its handlers, and calls `start()`. No callback may throw.
class X11EventLoop {
public:
    using TimePoint = DeadlineQueue::TimePoint;
    using TimerId = DeadlineQueue::Id;

    /// Connects, which takes a few round trips; the thread starts later.
    /// @param name the thread's name, cut to 15 bytes by the kernel.
    /// @param display address of the server; empty means $DISPLAY.
    /// @throws X11Error when there is no such display.
    explicit X11EventLoop(QByteArray name, const QByteArray& display = {});
    /// Stops, see there.
    ~X11EventLoop();
    X11EventLoop(const X11EventLoop&) = delete;
    X11EventLoop& operator=(const X11EventLoop&) = delete;

    /// The handler gets every event, and every error of an unchecked request (`response_type` 0), on the
    /// loop's thread; all handlers get each, in the order added. Before `start()` only.
    void addHandler(std::function<void(const xcb_generic_event_t&)> handler);
    /// Called once, on the loop's thread, when the server is gone. Before `start()` only.
    ///
    /// From then on posted work and deadlines still run, so that nobody waits for an answer forever, and
    /// every xcb call fails at once.
    void setConnectionLostHandler(std::function<void()> handler);
    void start();
    /// Runs what was posted before, ends the thread and waits for it. Should that take longer than the
    /// patience, the connection is cut, which ends any wait for the server. Twice is fine; not from the
    /// thread.
    void stop(std::chrono::milliseconds patience = std::chrono::seconds(1));

    /// Any thread, also before `start()`: runs the work on the loop's thread, in the order posted. After
    /// `stop()` it is dropped.
    void post(std::function<void()> work);

    // Below: the loop's thread only, or any one thread before `start()`.

    [[nodiscard]] TimerId runAt(TimePoint when, std::function<void()> call);
    /// Unknown, past and cancelled ones are ignored.
    void cancel(TimerId timer) { m_deadlines.remove(timer); }
    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] AtomCache& atoms() { return m_atoms; }
    [[nodiscard]] bool isConnected() const { return xcb_connection_has_error(m_connection) == 0; }

private:
    void run();
    bool turn();
    void runPosted();
    bool dispatchEvents();
    void noticeLoss();
    void sleepUntilNeeded();
    void wake();

    QByteArray m_name;
    xcb_connection_t* m_connection = nullptr;
    const xcb_screen_t* m_screen = nullptr;
    int m_wakeDescriptor = -1;
    AtomCache m_atoms;
    std::vector<std::function<void(const xcb_generic_event_t&)>> m_handlers;
    std::function<void()> m_onConnectionLost;
    DeadlineQueue m_deadlines;
    bool m_lost = false;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_posted; // under the mutex
    bool m_stopping = false;                     // under the mutex
    std::promise<void> m_ended;
    std::thread m_thread;
};

} // namespace tessary
