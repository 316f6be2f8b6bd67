#include "platform/x11/WindowFocus.h"

#include "platform/x11/WindowProperties.h"
#include "platform/x11/XcbReply.h"

#include <array>
#include <unistd.h>

namespace tessary {
namespace {

QByteArray hostName()
{
    std::array<char, 256> name{};
    ::gethostname(name.data(), name.size() - 1);
    return QByteArray(name.data());
}

xcb_window_t focusedWindow(xcb_connection_t* connection)
{
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t parentOf(xcb_connection_t* connection, xcb_window_t window)
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

/// Toolkits give the keyboard to a window inside their visible one.
bool isInside(xcb_connection_t* connection, xcb_window_t window, xcb_window_t outer)
{
    constexpr int kDeepest = 32;
    for (int depth = 0; depth < kDeepest && window > XCB_INPUT_FOCUS_POINTER_ROOT; ++depth) {
        if (window == outer)
            return true;
        window = parentOf(connection, window);
    }
    return false;
}

} // namespace

/// Some window managers append a second word of 0.
xcb_window_t activeWindow(X11EventLoop& loop)
{
    const auto words = wordsProperty(loop.connection(), loop.root(), loop.atoms().atom("_NET_ACTIVE_WINDOW"),
                                     XCB_ATOM_WINDOW);
    return words.empty() ? xcb_window_t{XCB_WINDOW_NONE} : words.front();
}

qint64 processOf(X11EventLoop& loop, xcb_window_t window)
{
    const auto process =
        wordsProperty(loop.connection(), window, loop.atoms().atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    // A process of another machine has a number that means nothing here.
    const QByteArray machine =
        textProperty(loop.connection(), window, loop.atoms().atom("WM_CLIENT_MACHINE")).value_or("");
    const bool isLocal = machine.isEmpty() || machine == hostName();
    return process.empty() || !isLocal ? 0 : qint64{process.front()};
}

bool isWindowOf(X11EventLoop& loop, const RunningApplication& application)
{
    const auto window = static_cast<xcb_window_t>(application.window);
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        loop.connection(), xcb_get_window_attributes(loop.connection(), window), nullptr));
    return attributes && processOf(loop, window) == application.processIdentifier;
}

bool hasFocus(X11EventLoop& loop, xcb_window_t window)
{
    return isInside(loop.connection(), focusedWindow(loop.connection()), window);
}

bool hasKeyboard(X11EventLoop& loop, const RunningApplication& application)
{
    const xcb_window_t active = activeWindow(loop);
    if (active == XCB_WINDOW_NONE)
        return false;
    const bool isTheirs =
        active == application.window ||
        (application.processIdentifier > 0 && processOf(loop, active) == application.processIdentifier);
    return isTheirs && hasFocus(loop, active);
}

} // namespace tessary
