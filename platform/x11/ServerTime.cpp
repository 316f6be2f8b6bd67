#include "platform/x11/ServerTime.h"

#include <utility>

namespace tessary {
namespace {

const QByteArray kProperty("TESSARY_TIME");

} // namespace

ServerTime::ServerTime(X11EventLoop& loop, xcb_window_t window) : m_loop(loop), m_window(window) {}

void ServerTime::request(std::function<void(xcb_timestamp_t)> receiver)
{
    if (!m_loop.isConnected())
        return receiver(XCB_CURRENT_TIME);
    m_waiting.push_back(std::move(receiver));
    xcb_change_property(m_loop.connection(), XCB_PROP_MODE_APPEND, m_window, m_loop.atoms().atom(kProperty),
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
}

void ServerTime::handleEvent(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY || m_waiting.empty())
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window != m_window || change.atom != m_loop.atoms().atom(kProperty))
        return;
    const auto receiver = std::move(m_waiting.front());
    m_waiting.pop_front();
    receiver(change.time);
}

void ServerTime::connectionLost()
{
    for (const auto& receiver : std::exchange(m_waiting, {}))
        receiver(XCB_CURRENT_TIME);
}

xcb_window_t createHiddenWindow(const X11EventLoop& loop)
{
    const xcb_window_t window = xcb_generate_id(loop.connection());
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(loop.connection(), XCB_COPY_FROM_PARENT, window, loop.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return window;
}

} // namespace tessary
