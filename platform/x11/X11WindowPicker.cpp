#include "platform/x11/X11WindowPicker.h"

#include "platform/linux/VirtualKeys.h"
#include "platform/x11/WindowProperties.h"
#include "platform/x11/X11AsyncCall.h"
#include "platform/x11/XcbReply.h"

#include <deque>
#include <utility>

namespace tessary {
namespace {

constexpr quint32 kEscape = 53;     // classic virtual key code
constexpr uint16_t kCrosshair = 34; // in the cursor font, followed by its mask
constexpr int kMostWindows = 200;   // looked through for the one that a program owns
constexpr uint16_t kFull = 0xffff;  // of a colour channel
const QByteArray kCursorFont("cursor");

xcb_cursor_t crosshair(xcb_connection_t* x)
{
    const xcb_font_t font = xcb_generate_id(x);
    xcb_open_font(x, font, static_cast<uint16_t>(kCursorFont.size()), kCursorFont.constData());
    const xcb_cursor_t cursor = xcb_generate_id(x);
    xcb_create_glyph_cursor(x, cursor, font, font, kCrosshair, kCrosshair + 1, 0, 0, 0, kFull, kFull, kFull);
    xcb_close_font(x, font);
    return cursor;
}

} // namespace

X11WindowPicker::X11WindowPicker(DesktopEntries entries, QString ownIdentifier)
    : m_loop("tessary-picker"),
      m_programs(m_loop, std::move(entries), std::move(ownIdentifier))
{
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    m_loop.setConnectionLostHandler([this] { end({PickedWindow::Outcome::Unavailable, {}}); });
    m_loop.start();
}

X11WindowPicker::~X11WindowPicker()
{
    m_loop.stop();
}

QCoro::Task<PickedWindow> X11WindowPicker::pick()
{
    if (std::exchange(m_isPicking, true))
        co_return PickedWindow{};
    std::function<void(Done)> start = [this](Done done) { begin(std::move(done)); };
    PickedWindow picked = co_await X11AsyncCall<PickedWindow>(m_loop, std::move(start));
    m_isPicking = false;
    co_return picked;
}

void X11WindowPicker::cancel()
{
    m_loop.post([this] { end({}); });
}

void X11WindowPicker::begin(Done done)
{
    m_done = std::move(done);
    m_frame = XCB_WINDOW_NONE;
    m_isPressed = false;
    m_escape = keycodeOfVirtualKey(kEscape).value_or(0);
    m_programs.prefetchAtoms();
    if (!grab())
        end({PickedWindow::Outcome::Unavailable, {}});
}

bool X11WindowPicker::grab()
{
    xcb_connection_t* x = m_loop.connection();
    if (m_cursor == XCB_CURSOR_NONE)
        m_cursor = crosshair(x);
    constexpr uint16_t kEvents = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
    const auto pointer = xcb_grab_pointer(x, 0, m_loop.root(), kEvents, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, m_cursor, XCB_CURRENT_TIME);
    const auto keyboard =
        xcb_grab_keyboard(x, 0, m_loop.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_grab_pointer_reply_t> pointed(xcb_grab_pointer_reply(x, pointer, nullptr));
    const XcbReply<xcb_grab_keyboard_reply_t> typed(xcb_grab_keyboard_reply(x, keyboard, nullptr));
    return pointed && pointed->status == XCB_GRAB_STATUS_SUCCESS && typed &&
           typed->status == XCB_GRAB_STATUS_SUCCESS;
}

void X11WindowPicker::handle(const xcb_generic_event_t& event)
{
    if (!m_done)
        return;
    switch (event.response_type & 0x7f) {
    case XCB_KEY_PRESS:
        if (reinterpret_cast<const xcb_key_press_event_t&>(event).detail == m_escape)
            end({});
        break;
    case XCB_BUTTON_PRESS:
        press(reinterpret_cast<const xcb_button_press_event_t&>(event));
        break;
    case XCB_BUTTON_RELEASE:
        if (std::exchange(m_isPressed, false))
            answerPress(); // the release is ours, too: nobody must see one without its press
        break;
    default:
        break;
    }
}

void X11WindowPicker::press(const xcb_button_press_event_t& event)
{
    constexpr xcb_button_t kSecondary = 3;
    if (event.detail == kSecondary)
        return end({});
    if (event.detail != 1)
        return;
    m_isPressed = true;
    m_frame = event.child;
}

void X11WindowPicker::answerPress()
{
    const xcb_window_t client = clientUnder(m_frame);
    const std::optional<RunningApplication> program =
        client != XCB_WINDOW_NONE ? m_programs.programOf(client) : std::nullopt;
    if (program && program->bundleIdentifier)
        end({PickedWindow::Outcome::Picked, *program});
    else
        end({PickedWindow::Outcome::NoApplication, {}});
}

void X11WindowPicker::end(const PickedWindow& picked)
{
    if (!m_done)
        return;
    xcb_ungrab_pointer(m_loop.connection(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(m_loop.connection(), XCB_CURRENT_TIME);
    xcb_flush(m_loop.connection());
    const Done done = std::exchange(m_done, {});
    done(picked);
}

/// Window managers put windows into frames of their own, and mark the window itself.
xcb_window_t X11WindowPicker::clientUnder(xcb_window_t frame)
{
    xcb_connection_t* x = m_loop.connection();
    const xcb_atom_t mark = m_loop.atoms().atom("WM_STATE");
    std::deque<xcb_window_t> waiting;
    if (frame != XCB_WINDOW_NONE)
        waiting.push_back(frame);
    for (int seen = 0; !waiting.empty() && seen < kMostWindows; ++seen) {
        const xcb_window_t window = waiting.front();
        waiting.pop_front();
        if (!wordsProperty(x, window, mark, mark).empty())
            return window;
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
        if (!tree)
            continue;
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        waiting.insert(waiting.end(), children, children + xcb_query_tree_children_length(tree.get()));
    }
    return frame; // one that nobody manages
}

} // namespace tessary
