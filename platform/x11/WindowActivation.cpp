#include "platform/x11/WindowActivation.h"

#include "platform/x11/WindowFocus.h"
#include "platform/x11/WindowProperties.h"

#include <utility>

#include <unistd.h>

namespace tessary {
namespace {

const QByteArray kCheck("_NET_SUPPORTING_WM_CHECK");

/// From a pager or the like, at the person's command: window managers grant that where they would take a
/// program's own wish for an intrusion.
constexpr uint32_t kSourceIsPerson = 2;

/// With a window manager that is busy: openbox, for one, reads its keys anew for a tenth of a second whenever
/// a tool that types changes the keyboard's map.
constexpr std::chrono::seconds kPatience{2};

} // namespace

WindowActivation::WindowActivation(X11EventLoop& loop) : m_loop(loop), m_time(loop, createHiddenWindow(loop))
{
}

void WindowActivation::request(const RunningApplication& application, std::function<void(bool)> done)
{
    if (!isWindowOf(m_loop, application) || !hasWindowManager())
        return done(false);
    const auto window = static_cast<xcb_window_t>(application.window);
    m_time.request([this, window, done = std::move(done)](xcb_timestamp_t time) {
        if (time == XCB_CURRENT_TIME)
            return done(false);
        ask(window, time);
        awaitManager(done);
    });
}

void WindowActivation::request(xcb_window_t window)
{
    m_time.request([this, window](xcb_timestamp_t time) { ask(window, time); });
}

bool WindowActivation::isActive(const RunningApplication& application)
{
    return hasKeyboard(m_loop, application);
}

void WindowActivation::handleEvent(const xcb_generic_event_t& event)
{
    m_time.handleEvent(event);
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY || m_waiting.empty())
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const bool isActiveWindow =
        change.window == m_loop.root() && change.atom == m_loop.atoms().atom("_NET_ACTIVE_WINDOW");
    if (isActiveWindow && !isOursActive())
        answerWaiting();
}

void WindowActivation::connectionLost()
{
    m_time.connectionLost();
    answerWaiting();
}

bool WindowActivation::isOursActive()
{
    const xcb_window_t active = activeWindow(m_loop);
    return active != XCB_WINDOW_NONE && processOf(m_loop, active) == ::getpid();
}

void WindowActivation::awaitManager(std::function<void(bool)> done)
{
    if (!isOursActive())
        return done(true);
    m_waiting.push_back(std::move(done));
    if (m_waiting.size() == 1)
        m_patience = m_loop.runAt(std::chrono::steady_clock::now() + kPatience, [this] { answerWaiting(); });
}

void WindowActivation::answerWaiting()
{
    m_loop.cancel(m_patience);
    for (const auto& done : std::exchange(m_waiting, {}))
        done(true);
}

/// The property outlives a window manager that crashed, the window that it names does not.
bool WindowActivation::hasWindowManager()
{
    const xcb_atom_t check = m_loop.atoms().atom(kCheck);
    const auto named = wordsProperty(m_loop.connection(), m_loop.root(), check, XCB_ATOM_WINDOW);
    if (named.empty())
        return false;
    return wordsProperty(m_loop.connection(), named.front(), check, XCB_ATOM_WINDOW) == named;
}

void WindowActivation::ask(xcb_window_t window, xcb_timestamp_t time)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_loop.atoms().atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = kSourceIsPerson;
    message.data.data32[1] = time;
    static_assert(sizeof message == 32);
    xcb_send_event(m_loop.connection(), 0, m_loop.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

} // namespace tessary
