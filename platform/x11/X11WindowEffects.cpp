#include "platform/x11/X11WindowEffects.h"

#include "platform/linux/VirtualKeys.h"
#include "platform/x11/XcbReply.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include <cmath>

namespace tessary {
namespace {

/// Null where Qt does not speak X11.
xcb_connection_t* qtConnection()
{
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application != nullptr ? application->connection() : nullptr;
}

/// The window of ours with that identifier, if it is shown; else null.
QWindow* shownWindow(quintptr window)
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto found = std::find_if(windows.cbegin(), windows.cend(), [window](const QWindow* one) {
        return one->isVisible() && one->winId() == window;
    });
    return found != windows.cend() ? *found : nullptr;
}

} // namespace

X11WindowEffects::X11WindowEffects(QObject* parent)
    : WindowEffects(parent),
      m_loop("tessary-effects"),
      m_activation(m_loop)
{
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    watchCompositor();
    m_loop.start();
}

/// Before the thread starts, so that the first window is right from the beginning.
void X11WindowEffects::watchCompositor()
{
    xcb_connection_t* x = m_loop.connection();
    m_floatingStates = {m_loop.atoms().atom("_NET_WM_STATE"),
                        m_loop.atoms().atom("_NET_WM_STATE_SKIP_TASKBAR"),
                        m_loop.atoms().atom("_NET_WM_STATE_SKIP_PAGER"),
                        m_loop.atoms().atom("_NET_WM_STATE_STICKY"), m_loop.atoms().atom("_NET_WM_DESKTOP")};
    m_compositor = m_loop.atoms().atom("_NET_WM_CM_S0");
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(x, &xcb_xfixes_id);
    if (extension != nullptr && extension->present != 0) {
        m_ownerEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        xcb_discard_reply(x, xcb_xfixes_query_version(x, 5, 0).sequence);
        xcb_xfixes_select_selection_input(x, m_loop.root(), m_compositor,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    const XcbReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, m_compositor), nullptr));
    m_isComposited = owner && owner->owner != XCB_WINDOW_NONE;
}

X11WindowEffects::~X11WindowEffects()
{
    m_loop.stop();
}

void X11WindowEffects::handle(const xcb_generic_event_t& event)
{
    m_activation.handleEvent(event);
    if (m_ownerEvent == 0 || (event.response_type & 0x7f) != m_ownerEvent)
        return;
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (change.selection == m_compositor)
        publish(change.owner != XCB_WINDOW_NONE);
}

void X11WindowEffects::publish(bool isComposited)
{
    const auto take = [this, isComposited] {
        if (std::exchange(m_isComposited, isComposited) != isComposited)
            Q_EMIT compositedChanged();
    };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
}

void X11WindowEffects::setFloating(quintptr window)
{
    xcb_connection_t* x = qtConnection();
    if (x == nullptr)
        return;
    append(window, {m_floatingStates.skipTaskbar, m_floatingStates.skipPager, m_floatingStates.sticky});
    const uint32_t allWorkspaces = 0xffffffff;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window),
                        m_floatingStates.workspace, XCB_ATOM_CARDINAL, 32, 1, &allWorkspaces);
}

void X11WindowEffects::setListed(quintptr window, bool isListed)
{
    if (qtConnection() == nullptr)
        return;
    if (shownWindow(window) != nullptr)
        requestStates(window, isListed);
    else if (!isListed)
        append(window, {m_floatingStates.skipTaskbar, m_floatingStates.skipPager});
}

/// On Qt's own connection, so that it is there before Qt maps the window; Qt keeps states that it does not
/// know. Window managers clear them when the window is hidden.
void X11WindowEffects::append(quintptr window, const std::vector<xcb_atom_t>& states) const
{
    xcb_change_property(qtConnection(), XCB_PROP_MODE_APPEND, static_cast<xcb_window_t>(window),
                        m_floatingStates.property, XCB_ATOM_ATOM, 32, static_cast<uint32_t>(states.size()),
                        states.data());
}

/// The states of a window that is shown are the window manager's to change.
void X11WindowEffects::requestStates(quintptr window, bool isListed) const
{
    constexpr uint32_t kRemove = 0;
    constexpr uint32_t kAdd = 1;
    constexpr uint32_t kFromApplication = 1;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = static_cast<xcb_window_t>(window);
    request.type = m_floatingStates.property;
    request.data.data32[0] = isListed ? kRemove : kAdd;
    request.data.data32[1] = m_floatingStates.skipTaskbar;
    request.data.data32[2] = m_floatingStates.skipPager;
    request.data.data32[3] = kFromApplication;
    xcb_send_event(qtConnection(), 0, m_loop.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(qtConnection());
}

void X11WindowEffects::setInputRegion(quintptr window, const QRect& region, qreal devicePixelRatio)
{
    const auto device = [devicePixelRatio](int value) { return std::lround(value * devicePixelRatio); };
    const xcb_rectangle_t area{
        static_cast<int16_t>(device(region.x())), static_cast<int16_t>(device(region.y())),
        static_cast<uint16_t>(device(region.width())), static_cast<uint16_t>(device(region.height()))};
    m_loop.post([this, window, area] {
        xcb_shape_rectangles(m_loop.connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                             XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(window), 0, 0, 1, &area);
    });
}

void X11WindowEffects::activate(quintptr window)
{
    m_loop.post([this, window] { m_activation.request(static_cast<xcb_window_t>(window)); });
}

/// Through Qt, which has to hear the events of the grabbed devices.
bool X11WindowEffects::takeInput(quintptr window)
{
    QWindow* const taker = shownWindow(window);
    if (taker == nullptr || !taker->setKeyboardGrabEnabled(true))
        return false;
    if (taker->setMouseGrabEnabled(true))
        return true;
    taker->setKeyboardGrabEnabled(false);
    return false;
}

void X11WindowEffects::releaseInput(quintptr window)
{
    if (QWindow* const taker = shownWindow(window)) {
        taker->setMouseGrabEnabled(false);
        taker->setKeyboardGrabEnabled(false);
    }
}

bool X11WindowEffects::takeKeyboard(quintptr window)
{
    QWindow* const taker = shownWindow(window);
    return taker != nullptr && taker->setKeyboardGrabEnabled(true);
}

void X11WindowEffects::releaseKeyboard(quintptr window)
{
    if (QWindow* const taker = shownWindow(window))
        taker->setKeyboardGrabEnabled(false);
}

std::optional<quint32> X11WindowEffects::virtualKey(quint32 nativeScanCode) const
{
    return virtualKeyOfKeycode(nativeScanCode);
}

} // namespace tessary
