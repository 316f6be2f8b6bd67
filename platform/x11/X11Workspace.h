#pragma once

#include "platform/Workspace.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/LogindSleepMonitor.h"
#include "platform/x11/X11EventLoop.h"

namespace tessary {

/// The active window of an X11 session, as its window manager names it, and the program behind it.
///
/// A panel or dock that takes the focus, as for a click on one of its icons, leaves the program before it
/// in front. Windows and desktop files are looked at on a thread of its own; titles never are.
class X11Workspace : public Workspace {
    Q_OBJECT
public:
    /// @param entries the installed programs; used on the thread from here on.
    /// @throws X11Error when there is no display.
    explicit X11Workspace(DesktopEntries entries, QObject* parent = nullptr);

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override
    {
        return m_frontmost;
    }

private:
    void watchRoot();
    void handle(const xcb_generic_event_t& event);
    void readActiveWindow();
    void noteDestroyed(xcb_window_t window);
    void expectNone();
    void noteNoneActive();
    void publish(std::optional<RunningApplication> application);
    [[nodiscard]] xcb_window_t activeWindow();
    [[nodiscard]] bool isDock(xcb_window_t window);
    [[nodiscard]] std::optional<RunningApplication> programOf(xcb_window_t window);

    LogindSleepMonitor m_sleepMonitor;
    std::optional<RunningApplication> m_frontmost; // main thread
    DesktopEntries m_entries;                      // the loop's thread, as all below
    xcb_window_t m_active = XCB_WINDOW_NONE;
    X11EventLoop::TimerId m_noneConfirmation = 0;
    X11EventLoop m_loop;
};

} // namespace tessary
