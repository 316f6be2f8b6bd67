#include "platform/x11/X11Permissions.h"

#include "platform/x11/XcbReply.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace tessary {
namespace {

bool canReadScreen(xcb_connection_t* connection, xcb_window_t root)
{
    const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, 0, 0, 1, 1, ~0U), nullptr));
    return image != nullptr;
}

bool canType(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_test_id);
    return extension != nullptr && extension->present != 0;
}

PermissionState probeNow()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    PermissionState state;
    if (xcb_connection_has_error(connection.get()) != 0)
        return state;
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    state.screenRecording = screens.rem > 0 && canReadScreen(connection.get(), screens.data->root);
    state.accessibility = canType(connection.get());
    return state;
}

} // namespace

QCoro::Task<PermissionState> X11Permissions::probe()
{
    const PermissionState state = co_await m_lane.post(&probeNow);
    co_return state;
}

} // namespace tessary
