#include "platform/x11/X11Workspace.h"

#include "platform/x11/WindowFocus.h"
#include "platform/x11/WindowProperties.h"
#include "platform/x11/X11AsyncCall.h"
#include "platform/x11/X11Call.h"
#include "platform/x11/XcbReply.h"

#include <algorithm>

namespace tessary {
namespace {

const QByteArray kActiveWindow("_NET_ACTIVE_WINDOW");
const QByteArray kWindowType("_NET_WM_WINDOW_TYPE");
const QByteArray kDock("_NET_WM_WINDOW_TYPE_DOCK");

/// On the way from one window to another, window managers name none for a moment.
constexpr std::chrono::milliseconds kBetweenWindows{150};

} // namespace

X11Workspace::X11Workspace(DesktopEntries entries, QString ownIdentifier, QObject* parent)
    : Workspace(parent),
      m_loop("tessary-windows"),
      m_activation(m_loop),
      m_programs(m_loop, std::move(entries), std::move(ownIdentifier))
{
    connect(&m_sleepMonitor, &LogindSleepMonitor::wokeUp, this, &Workspace::didWake);
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    // Without a server there is no active window.
    m_loop.setConnectionLostHandler([this] {
        m_activation.connectionLost();
        publish(std::nullopt);
    });
    m_loop.start();
    m_loop.post([this] { watchRoot(); });
}

X11Workspace::~X11Workspace()
{
    m_loop.stop();
}

QCoro::Task<bool> X11Workspace::requestActivation(RunningApplication application)
{
    std::function<void(X11AsyncCall<bool>::Done)> request =
        [this, application](const X11AsyncCall<bool>::Done& done) {
            m_activation.request(application, done);
        };
    const bool isGranted = co_await X11AsyncCall<bool>(m_loop, std::move(request));
    co_return isGranted;
}

QCoro::Task<bool> X11Workspace::isActive(RunningApplication application)
{
    std::function<bool()> look = [this, application] { return m_activation.isActive(application); };
    const bool isInFront = co_await X11Call<bool>(m_loop, std::move(look));
    co_return isInFront;
}

void X11Workspace::watchRoot()
{
    m_loop.atoms().prefetch({kActiveWindow, kWindowType, kDock});
    m_programs.prefetchAtoms();
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_loop.connection(), m_loop.root(), XCB_CW_EVENT_MASK, &mask);
    readActiveWindow();
}

void X11Workspace::handle(const xcb_generic_event_t& event)
{
    m_activation.handleEvent(event);
    const int kind = event.response_type & 0x7f;
    if (kind == XCB_DESTROY_NOTIFY)
        noteDestroyed(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    if (kind != XCB_PROPERTY_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == m_loop.root() && change.atom == m_loop.atoms().atom(kActiveWindow))
        readActiveWindow();
}

void X11Workspace::readActiveWindow()
{
    const xcb_window_t window = activeWindow(m_loop);
    m_loop.cancel(m_noneConfirmation);
    if (window == m_active || isDock(window))
        return;
    if (window == XCB_WINDOW_NONE) {
        expectNone();
        return;
    }
    // Asked for first, so that a later end of the window is not missed.
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_loop.connection(), window, XCB_CW_EVENT_MASK, &mask);
    std::optional<RunningApplication> program = m_programs.programOf(window);
    if (!program) {
        m_active = XCB_WINDOW_NONE;
        expectNone();
        return;
    }
    m_active = window;
    publish(std::move(program));
}

/// Some window managers leave a window that is gone named as the active one. The next window may well have
/// its number, so that is forgotten at once.
void X11Workspace::noteDestroyed(xcb_window_t window)
{
    if (window != m_active)
        return;
    m_active = XCB_WINDOW_NONE;
    expectNone();
}

void X11Workspace::expectNone()
{
    m_loop.cancel(m_noneConfirmation);
    const auto when = std::chrono::steady_clock::now() + kBetweenWindows;
    m_noneConfirmation = m_loop.runAt(when, [this] { noteNoneActive(); });
}

void X11Workspace::noteNoneActive()
{
    m_active = XCB_WINDOW_NONE;
    publish(std::nullopt);
}

bool X11Workspace::isDock(xcb_window_t window)
{
    const auto types =
        wordsProperty(m_loop.connection(), window, m_loop.atoms().atom(kWindowType), XCB_ATOM_ATOM);
    return std::find(types.begin(), types.end(), m_loop.atoms().atom(kDock)) != types.end();
}

void X11Workspace::publish(std::optional<RunningApplication> application)
{
    const auto tell = [this, application = std::move(application)] {
        m_frontmost = application;
        if (application)
            Q_EMIT applicationActivated(*application);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

} // namespace tessary
