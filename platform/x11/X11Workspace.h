#pragma once

#include "platform/Workspace.h"
#include "platform/linux/LogindSleepMonitor.h"
#include "platform/x11/WindowActivation.h"
#include "platform/x11/WindowPrograms.h"

namespace tessary {

/// The active window of an X11 session, as its window manager names it, and the program behind it.
///
/// A panel or dock that takes the focus, as for a click on one of its icons, leaves the program before it
/// in front. Windows and desktop files are looked at on a thread of its own; titles never are.
class X11Workspace : public Workspace {
    Q_OBJECT
public:
    /// @param entries the installed programs; used on the thread from here on.
    /// @param ownIdentifier the bundle identifier of this very process, installed or not.
    /// @throws X11Error when there is no display.
    explicit X11Workspace(DesktopEntries entries, QString ownIdentifier, QObject* parent = nullptr);
    ~X11Workspace() override;

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override
    {
        return m_frontmost;
    }
    [[nodiscard]] QCoro::Task<bool> requestActivation(RunningApplication application) override;
    [[nodiscard]] QCoro::Task<bool> isActive(RunningApplication application) override;

private:
    void watchRoot();
    void handle(const xcb_generic_event_t& event);
    void readActiveWindow();
    void noteDestroyed(xcb_window_t window);
    void expectNone();
    void noteNoneActive();
    void publish(std::optional<RunningApplication> application);
    [[nodiscard]] bool isDock(xcb_window_t window);

    LogindSleepMonitor m_sleepMonitor;
    std::optional<RunningApplication> m_frontmost; // main thread
    xcb_window_t m_active = XCB_WINDOW_NONE;       // the loop's thread, as all below
    X11EventLoop::TimerId m_noneConfirmation = 0;
    X11EventLoop m_loop;
    WindowActivation m_activation; // needs the loop, which stops first
    WindowPrograms m_programs;     // the same
};

} // namespace tessary
