#include "platform/x11/KeyRepeat.h"

#include "platform/x11/XcbReply.h"

#include <xcb/xcb.h>
// A header for C, which has a member of that name.
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit

namespace tessary {
namespace {

constexpr std::chrono::milliseconds kShortest{100};

using Connection =
    std::unique_ptr<xcb_connection_t, decltype([](xcb_connection_t* x) { xcb_disconnect(x); })>;

} // namespace

std::chrono::milliseconds keyRepeatDelay()
{
    const Connection connection(xcb_connect(nullptr, nullptr));
    xcb_connection_t* x = connection.get();
    const XcbReply<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(
        x, xcb_xkb_use_extension(x, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
    if (!use || use->supported == 0)
        return kShortest;
    const XcbReply<xcb_xkb_get_controls_reply_t> controls(
        xcb_xkb_get_controls_reply(x, xcb_xkb_get_controls(x, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return controls ? std::chrono::milliseconds(controls->repeatDelay) : kShortest;
}

} // namespace tessary
