#include "platform/x11/ManagerHandover.h"

#include "platform/x11/XcbReply.h"

#include <algorithm>
#include <utility>

namespace tessary {

ManagerHandover::ManagerHandover(X11EventLoop& loop, xcb_window_t owner, std::chrono::milliseconds patience,
                                 std::chrono::milliseconds longest)
    : m_loop(loop),
      m_owner(owner),
      m_patience(patience),
      m_longest(longest)
{
}

void ManagerHandover::start(const std::vector<xcb_atom_t>& targets, xcb_timestamp_t time, Done done)
{
    end(false);
    xcb_connection_t* x = m_loop.connection();
    const xcb_atom_t selection = m_loop.atoms().atom("CLIPBOARD_MANAGER");
    const XcbReply<xcb_get_selection_owner_reply_t> manager(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
    if (!manager || manager->owner == XCB_WINDOW_NONE)
        return done(false);
    const xcb_atom_t property = m_loop.atoms().atom("TESSARY_SAVED_TARGETS");
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, m_owner, property, XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(x, m_owner, selection, m_loop.atoms().atom("SAVE_TARGETS"), property, time);
    m_done = std::move(done);
    m_end = std::chrono::steady_clock::now() + m_longest;
    expectProgress();
}

void ManagerHandover::handleEvent(const xcb_generic_event_t& event)
{
    if (!m_done || (event.response_type & 0x7f) != XCB_SELECTION_NOTIFY)
        return;
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (notify.requestor == m_owner && notify.selection == m_loop.atoms().atom("CLIPBOARD_MANAGER"))
        end(notify.property != XCB_ATOM_NONE);
}

void ManagerHandover::noteProgress()
{
    if (m_done)
        expectProgress();
}

void ManagerHandover::end(bool isKept)
{
    m_loop.cancel(m_timer);
    if (const Done done = std::exchange(m_done, nullptr))
        done(isKept);
}

void ManagerHandover::expectProgress()
{
    m_loop.cancel(m_timer);
    const auto next = std::min(std::chrono::steady_clock::now() + m_patience, m_end);
    m_timer = m_loop.runAt(next, [this] { end(false); });
}

} // namespace tessary
