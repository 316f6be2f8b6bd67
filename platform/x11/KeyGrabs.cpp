#include "platform/x11/KeyGrabs.h"

#include "platform/x11/KeyRepeat.h"
#include "platform/x11/WindowFocus.h"
#include "platform/x11/XcbReply.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tessary {
namespace {

/// The eight modifiers, without mouse buttons and the layout's number.
constexpr unsigned kModifierBits = 0xff;

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kLongestFreeze{500};
constexpr std::chrono::milliseconds kHeldKeyPoll{40};
constexpr std::chrono::milliseconds kFocusPoll{2};
/// Keys repeat a little sooner than they should.
constexpr std::chrono::milliseconds kRepeatTolerance{20};

} // namespace

KeyGrabs::KeyGrabs(X11EventLoop& loop, std::function<void(HotKeyIdentifier)> pressed)
    : m_loop(loop),
      m_pressed(std::move(pressed))
{
}

bool KeyGrabs::add(Reference reference, xcb_keycode_t keycode, quint32 modifiers, HotKeyIdentifier identifier)
{
    ensureMasks();
    const uint16_t mask = m_masks->fromClassic(modifiers);
    // The server lets one client grab a key twice, so we look ourselves.
    const bool ours = std::any_of(m_grabs.begin(), m_grabs.end(), [&](const auto& entry) {
        return entry.second.keycode == keycode && entry.second.mask == mask;
    });
    if (ours || !grab(keycode, mask))
        return false;
    m_grabs.emplace(reference, Grab{keycode, modifiers, mask, identifier});
    return true;
}

void KeyGrabs::remove(Reference reference)
{
    const auto found = m_grabs.find(reference);
    if (found == m_grabs.end())
        return;
    ungrab(found->second.keycode, found->second.mask);
    m_grabs.erase(found);
}

void KeyGrabs::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_KEY_PRESS:
        press(reinterpret_cast<const xcb_key_press_event_t&>(event));
        break;
    case XCB_MAPPING_NOTIFY:
        followMapping();
        break;
    default:
        break;
    }
}

void KeyGrabs::ensureMasks()
{
    if (!m_masks)
        m_masks = ModifierMasks::read(m_loop.connection());
}

std::vector<uint16_t> KeyGrabs::lockVariants() const
{
    std::vector<uint16_t> variants{0, XCB_MOD_MASK_LOCK};
    if (const uint16_t numLock = m_masks->numLock; numLock != 0) {
        variants.push_back(numLock);
        variants.push_back(static_cast<uint16_t>(numLock | XCB_MOD_MASK_LOCK));
    }
    return variants;
}

/// All variants or none.
bool KeyGrabs::grab(xcb_keycode_t keycode, uint16_t mask)
{
    xcb_connection_t* x = m_loop.connection();
    std::vector<xcb_void_cookie_t> cookies;
    for (const uint16_t locks : lockVariants()) {
        cookies.push_back(xcb_grab_key_checked(x, 0, m_loop.root(), static_cast<uint16_t>(mask | locks),
                                               keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
    }
    bool granted = m_loop.isConnected();
    for (const xcb_void_cookie_t cookie : cookies) {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(x, cookie));
        granted = granted && !error;
    }
    // A lost connection reports no error of the request.
    granted = granted && m_loop.isConnected();
    if (!granted)
        ungrab(keycode, mask);
    return granted;
}

void KeyGrabs::ungrab(xcb_keycode_t keycode, uint16_t mask)
{
    for (const uint16_t locks : lockVariants())
        xcb_ungrab_key(m_loop.connection(), keycode, m_loop.root(), static_cast<uint16_t>(mask | locks));
}

void KeyGrabs::press(const xcb_key_press_event_t& event)
{
    if (isRepetition(event))
        return releaseKeyboard();
    ensureMasks();
    const unsigned ignored = XCB_MOD_MASK_LOCK | m_masks->numLock;
    const unsigned mask = event.state & kModifierBits & ~ignored;
    for (const auto& [reference, grab] : m_grabs) {
        if (grab.keycode == event.detail && grab.mask == mask) {
            m_release = m_loop.runAt(Clock::now() + kLongestFreeze, [this] { releaseKeyboard(); });
            m_pressed(grab.identifier);
            m_repeatDelay = keyRepeatDelay(); // after the call: the person waits for what it does
            return;
        }
    }
    releaseKeyboard();
}

void KeyGrabs::releaseKeyboard()
{
    m_loop.cancel(std::exchange(m_release, 0));
    m_loop.cancel(std::exchange(m_focusPoll, 0));
    xcb_ungrab_keyboard(m_loop.connection(), XCB_CURRENT_TIME);
}

/// What a toolkit says of its window is not enough: Qt was seen to call one active some milliseconds before
/// the window manager gave it the focus, and what had been typed went to the window before.
void KeyGrabs::releaseKeyboardTo(xcb_window_t window)
{
    if (m_release == 0)
        return; // nothing is frozen
    if (hasFocus(m_loop, window))
        return releaseKeyboard();
    m_loop.cancel(m_focusPoll);
    m_focusPoll = m_loop.runAt(Clock::now() + kFocusPoll, [this, window] { releaseKeyboardTo(window); });
}

/// Whether a press is only a key that goes on being held. Its releases go to other windows, so we look for
/// ourselves when it is up again. While the keyboard is frozen every key looks held, but one that comes
/// again sooner than keys repeat has been pressed anew.
bool KeyGrabs::isRepetition(const xcb_key_press_event_t& event)
{
    const auto [held, isNew] = m_held.try_emplace(event.detail, HeldKey{event.time, false});
    if (isNew) {
        if (m_held.size() == 1)
            watchHeldKeys();
        return false;
    }
    const bool isSoon =
        std::chrono::milliseconds(event.time - held->second.pressed) < m_repeatDelay - kRepeatTolerance;
    const bool isRepetition = held->second.hasRepeated || !isSoon;
    held->second = HeldKey{event.time, isRepetition};
    return isRepetition;
}

void KeyGrabs::watchHeldKeys()
{
    (void)m_loop.runAt(Clock::now() + kHeldKeyPoll, [this] {
        xcb_connection_t* x = m_loop.connection();
        const XcbReply<xcb_query_keymap_reply_t> keys(
            xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr));
        std::erase_if(m_held, [&keys](const auto& entry) {
            constexpr int kBits = 8;
            return !keys || (keys->keys[entry.first / kBits] >> (entry.first % kBits) & 1) == 0;
        });
        if (!m_held.empty())
            watchHeldKeys();
    });
}

/// Grabs anew when Alt, Super or Num Lock moved to other modifiers; keys keep their positions.
void KeyGrabs::followMapping()
{
    if (!m_masks)
        return;
    const ModifierMasks masks = ModifierMasks::read(m_loop.connection());
    if (masks == *m_masks)
        return;
    for (const auto& [reference, grab] : m_grabs)
        ungrab(grab.keycode, grab.mask);
    m_masks = masks;
    for (auto& [reference, held] : m_grabs) {
        held.mask = masks.fromClassic(held.classicModifiers);
        // One that another program holds now stays silent until it is registered again.
        (void)grab(held.keycode, held.mask);
    }
}

} // namespace tessary
