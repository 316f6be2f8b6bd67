#include "platform/x11/StartupIdentifier.h"

#include "platform/x11/XcbReply.h"

#include <xcb/xcb.h>

#include <QCoreApplication>

#include <atomic>
#include <optional>

namespace tessary {
namespace {

/// Appending nothing to a property of a window makes the server tell its time.
std::optional<xcb_timestamp_t> serverTime(xcb_connection_t* connection)
{
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    if (screens.rem == 0)
        return std::nullopt;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screens.data->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    xcb_flush(connection);
    while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
        if ((event->response_type & 0x7fU) == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
        if (event->response_type == 0)
            return std::nullopt; // an error
    }
    return std::nullopt;
}

} // namespace

QString x11StartupIdentifier()
{
    static std::atomic<int> count = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        return {};
    const std::optional<xcb_timestamp_t> time = serverTime(connection.get());
    if (!time)
        return {};
    return QStringLiteral("tessary-%1-%2_TIME%3")
        .arg(QCoreApplication::applicationPid())
        .arg(++count)
        .arg(*time);
}

} // namespace tessary
