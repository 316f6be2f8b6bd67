#include "platform/x11/X11KeystrokeSender.h"

#include "platform/x11/HeldModifiers.h"
#include "platform/x11/WindowFocus.h"
#include "platform/x11/X11Call.h"
#include "platform/x11/XcbReply.h"

#include <algorithm>

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace tessary {

X11KeystrokeSender::X11KeystrokeSender() : m_loop("tessary-typing")
{
    m_loop.start();
    m_loop.post([this] { setUp(); });
}

X11KeystrokeSender::~X11KeystrokeSender()
{
    m_loop.stop();
}

QCoro::Task<std::optional<PasteKeystroke>> X11KeystrokeSender::pasteKeystroke(RunningApplication target)
{
    using Choice = std::optional<PasteKeystroke>;
    std::function<Choice()> look = [this, isTerminal = target.isTerminal] { return choose(isTerminal); };
    const Choice choice = co_await X11Call<Choice>(m_loop, std::move(look));
    co_return choice;
}

QCoro::Task<bool> X11KeystrokeSender::send(PasteKeystroke keystroke, RunningApplication target)
{
    std::function<bool()> typing = [this, keystroke, target] { return type(keystroke, target); };
    const bool isTyped = co_await X11Call<bool>(m_loop, std::move(typing));
    co_return isTyped;
}

void X11KeystrokeSender::setUp()
{
    xcb_connection_t* x = m_loop.connection();
    const xcb_query_extension_reply_t* typing = xcb_get_extension_data(x, &xcb_test_id);
    const bool hasLayouts =
        xkb_x11_setup_xkb_extension(x, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr,
                                    nullptr) == 1;
    m_canType = typing != nullptr && typing->present != 0 && hasLayouts;
    // Without its version the server takes us for a program that knows no keyboards but one.
    const XcbReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, 2, 0), nullptr));
}

std::optional<PasteKeystroke> X11KeystrokeSender::choose(bool isTerminal)
{
    const std::optional<PasteKeys> keys =
        m_canType ? PasteKeys::read(m_loop.connection()) : std::optional<PasteKeys>();
    if (!keys)
        return std::nullopt;
    if (!isTerminal && keys->chord(PasteKeystroke::ControlV))
        return PasteKeystroke::ControlV;
    if (keys->chord(PasteKeystroke::ShiftInsert))
        return PasteKeystroke::ShiftInsert;
    return std::nullopt;
}

bool X11KeystrokeSender::type(PasteKeystroke keystroke, const RunningApplication& target)
{
    xcb_connection_t* x = m_loop.connection();
    const std::optional<PasteKeys> keys = m_canType ? PasteKeys::read(x) : std::optional<PasteKeys>();
    if (!keys)
        return false;
    std::optional<PasteKeys::Chord> chord = keys->chord(keystroke);
    if (!chord) // the layout may have changed with the window
        chord = keys->chord(PasteKeystroke::ShiftInsert);
    const std::vector<xcb_keycode_t> held = heldModifiers(x);
    // Last of all, so that nothing is typed into a window that came in between.
    if (!chord || !hasKeyboard(m_loop, target))
        return false;
    for (const xcb_keycode_t key : held)
        release(key);
    // The server drops a synthesised press of a key that it holds for pressed by us already.
    release(chord->modifier);
    release(chord->key);
    press(chord->modifier);
    press(chord->key);
    release(chord->key);
    release(chord->modifier);
    pressAgain(physicallyHeld(x, held));
    return m_loop.isConnected();
}

void X11KeystrokeSender::press(xcb_keycode_t key)
{
    xcb_test_fake_input(m_loop.connection(), XCB_KEY_PRESS, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

void X11KeystrokeSender::release(xcb_keycode_t key)
{
    xcb_test_fake_input(m_loop.connection(), XCB_KEY_RELEASE, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                        0);
}

/// A key that the person lets go of just now must not stay pressed, so the fingers are looked at once more.
void X11KeystrokeSender::pressAgain(const std::vector<xcb_keycode_t>& modifiers)
{
    for (const xcb_keycode_t key : modifiers)
        press(key);
    const std::vector<xcb_keycode_t> still = physicallyHeld(m_loop.connection(), modifiers);
    for (const xcb_keycode_t key : modifiers) {
        if (std::find(still.begin(), still.end(), key) == still.end())
            release(key);
    }
}

} // namespace tessary
