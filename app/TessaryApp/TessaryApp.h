#pragma once

#include "app/AppRuntime.h"
#include "app/RewrittenSettings.h"
#include "app/TerminationSignals.h"
#include "app/TessaryApp/DesktopWindows.h"
#include "app/TessaryApp/SessionPlatform.h"
#include "app/bus/LibraryBusObject.h"
#include "app/menubar/MenuBarContent.h"
#include "app/menubar/MenuBarExtra.h"

namespace tessary {

/// The program: builds the platform, the runtime and the windows, and ties them to the session.
class TessaryApp : public QObject {
    Q_OBJECT
public:
    /// @param bus what others may call; outlives this.
    /// @throws X11Error, FileError: this session cannot be worked in.
    explicit TessaryApp(LibraryBusObject& bus);
    ~TessaryApp() override;

    void start();
    /// Lets running imports end, then leaves the event loop. Twice is fine.
    void quit();

private:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(StatusHosts::Kind kind);

    LibraryBusObject& m_bus;
    SessionPlatform m_session;
    DesktopWindows m_windows;
    AppRuntime m_runtime;
    RewrittenSettings m_rewrittenSettings;
    MenuBarContent m_menu;
    MenuBarExtra m_menuBar;
    TerminationSignals m_signals;
    bool m_isQuitting = false;
};

} // namespace tessary
