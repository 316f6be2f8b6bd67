#pragma once

#include "platform/RunningApplication.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/x11/X11EventLoop.h"

#include <optional>

namespace tessary {

/// Which program a window belongs to. The loop's thread only; asks the server and the disk, and waits.
class WindowPrograms {
public:
    /// @param ownIdentifier the bundle identifier of this very process, installed or not.
    WindowPrograms(X11EventLoop& loop, DesktopEntries entries, QString ownIdentifier);

    /// Asks for the atoms in one round.
    void prefetchAtoms();
    /// Nothing when the window is gone.
    [[nodiscard]] std::optional<RunningApplication> programOf(xcb_window_t window);

private:
    [[nodiscard]] WindowIdentity identityOf(xcb_window_t window, qint64 process);

    X11EventLoop& m_loop;
    DesktopEntries m_entries;
    QString m_ownIdentifier;
};

} // namespace tessary
