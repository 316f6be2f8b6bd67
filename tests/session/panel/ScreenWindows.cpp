#include "tests/session/panel/ScreenWindows.h"

#include "platform/x11/XcbReply.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include <xcb/xtest.h>

namespace tessary::testing {

namespace {

xcb_atom_t atom(xcb_connection_t* x, std::string_view name)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

ScreenWindows::ScreenWindows() : m_x(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_x) != 0)
        return;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_x)).data;
    m_root = screen->root;
}

ScreenWindows::~ScreenWindows()
{
    xcb_disconnect(m_x);
}

std::vector<xcb_window_t> ScreenWindows::children(xcb_window_t window) const
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_x, xcb_query_tree(m_x, window), nullptr));
    if (!tree)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::vector<xcb_window_t> ScreenWindows::all() const
{
    std::vector<xcb_window_t> found{m_root};
    for (size_t next = 0; next < found.size(); ++next) {
        const std::vector<xcb_window_t> below = children(found[next]);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

int ScreenWindows::count() const
{
    return static_cast<int>(all().size());
}

QByteArray ScreenWindows::property(xcb_window_t window, xcb_atom_t name) const
{
    constexpr uint32_t kWords = 256;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_x, xcb_get_property(m_x, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, kWords), nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

QByteArray ScreenWindows::title(xcb_window_t window) const
{
    const QByteArray inUtf8 = property(window, atom(m_x, "_NET_WM_NAME"));
    return inUtf8.isEmpty() ? property(window, XCB_ATOM_WM_NAME) : inUtf8;
}

std::optional<QRect> ScreenWindows::geometry(xcb_window_t window) const
{
    const XcbReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_x, xcb_get_geometry(m_x, window), nullptr));
    const XcbReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_x, xcb_translate_coordinates(m_x, window, m_root, 0, 0), nullptr));
    if (!size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

std::optional<ScreenWindows::Window> ScreenWindows::visible(const QByteArray& title) const
{
    for (const xcb_window_t window : all()) {
        if (!isVisible(window) || property(window, XCB_ATOM_WM_CLASS).isEmpty() ||
            this->title(window) != title)
            continue;
        if (const std::optional<QRect> place = geometry(window))
            return Window{window, *place};
    }
    return std::nullopt;
}

bool ScreenWindows::isVisible(xcb_window_t window) const
{
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(m_x, xcb_get_window_attributes(m_x, window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void ScreenWindows::press(const std::vector<xcb_keycode_t>& keys) const
{
    const auto send = [this](uint8_t kind, xcb_keycode_t key) {
        xcb_test_fake_input(m_x, kind, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    };
    for (const xcb_keycode_t key : keys)
        send(XCB_KEY_PRESS, key);
    std::for_each(keys.rbegin(), keys.rend(), [&](xcb_keycode_t key) { send(XCB_KEY_RELEASE, key); });
    xcb_flush(m_x);
}

bool ScreenWindows::hasKeyboard(xcb_window_t window) const
{
    constexpr xcb_window_t kNone = XCB_WINDOW_NONE;
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_x, xcb_get_input_focus(m_x), nullptr));
    for (xcb_window_t inside = focus ? focus->focus : kNone; inside > XCB_INPUT_FOCUS_POINTER_ROOT;) {
        if (inside == window)
            return true;
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_x, xcb_query_tree(m_x, inside), nullptr));
        inside = tree ? tree->parent : kNone;
    }
    return false;
}

QByteArray ScreenWindows::activeTitle() const
{
    const QByteArray value = property(m_root, atom(m_x, "_NET_ACTIVE_WINDOW"));
    xcb_window_t active = XCB_WINDOW_NONE;
    if (value.size() < static_cast<qsizetype>(sizeof active))
        return {};
    std::memcpy(&active, value.constData(), sizeof active);
    return title(active);
}

bool ScreenWindows::isLeftOut(xcb_window_t window) const
{
    const QByteArray states = property(window, atom(m_x, "_NET_WM_STATE"));
    const auto has = [&](const char* name) {
        const xcb_atom_t state = atom(m_x, name);
        return states.contains(QByteArray(reinterpret_cast<const char*>(&state), sizeof state));
    };
    return has("_NET_WM_STATE_SKIP_TASKBAR") && has("_NET_WM_STATE_SKIP_PAGER");
}

bool ScreenWindows::isTranslucent(xcb_window_t window) const
{
    constexpr uint8_t kWithAlpha = 32;
    const XcbReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_x, xcb_get_geometry(m_x, window), nullptr));
    return size && size->depth == kWithAlpha;
}

bool ScreenWindows::isManaged() const
{
    const QByteArray value = property(m_root, atom(m_x, "_NET_SUPPORTING_WM_CHECK"));
    xcb_window_t check = XCB_WINDOW_NONE;
    if (value.size() < static_cast<qsizetype>(sizeof check))
        return false;
    std::memcpy(&check, value.constData(), sizeof check);
    return !property(check, atom(m_x, "_NET_WM_NAME")).isEmpty(); // a former one left its note
}

bool ScreenWindows::isComposited() const
{
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_x, xcb_get_selection_owner(m_x, atom(m_x, "_NET_WM_CM_S0")), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

QImage ScreenWindows::picture(const QRect& area) const
{
    const XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        m_x,
        xcb_get_image(m_x, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<int16_t>(area.x()),
                      static_cast<int16_t>(area.y()), static_cast<uint16_t>(area.width()),
                      static_cast<uint16_t>(area.height()), ~0U),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), QImage::Format_RGB32).copy();
}

void ScreenWindows::follow(xcb_window_t window)
{
    const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_x, window, XCB_CW_EVENT_MASK, &events);
    (void)title(window); // the server has seen it
    (void)changes();
    m_changes = {};
}

ScreenWindows::Changes ScreenWindows::changes()
{
    (void)title(m_root); // whatever happened has been sent
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_x)}) {
        const int type = event->response_type & 0x7f;
        m_changes.shown += type == XCB_MAP_NOTIFY ? 1 : 0;
        m_changes.hidden += type == XCB_UNMAP_NOTIFY ? 1 : 0;
    }
    return m_changes;
}

} // namespace tessary::testing
