#include "platform/x11/ModifierMasks.h"

#include "platform/x11/XcbReply.h"

namespace tessary {
namespace {

constexpr quint32 kCommand = 256;
constexpr quint32 kShift = 512;
constexpr quint32 kOption = 2048;
constexpr quint32 kControl = 4096;

// Keysyms have no header of their own in xcb.
constexpr xcb_keysym_t kAltLeft = 0xffe9;
constexpr xcb_keysym_t kAltRight = 0xffea;
constexpr xcb_keysym_t kSuperLeft = 0xffeb;
constexpr xcb_keysym_t kSuperRight = 0xffec;
constexpr xcb_keysym_t kNumLock = 0xff7f;

constexpr int kModifiers = 8;
constexpr int kFirstFreeModifier = 3; // after Shift, Lock and Control

/// What keys bring forth, by key code.
class KeyboardMapping {
public:
    explicit KeyboardMapping(xcb_connection_t* connection)
        : m_first(xcb_get_setup(connection)->min_keycode),
          m_count(xcb_get_setup(connection)->max_keycode - m_first + 1),
          m_reply(xcb_get_keyboard_mapping_reply(connection,
                                                 xcb_get_keyboard_mapping(connection,
                                                                          static_cast<xcb_keycode_t>(m_first),
                                                                          static_cast<uint8_t>(m_count)),
                                                 nullptr))
    {
    }

    [[nodiscard]] bool brings(xcb_keycode_t keycode, xcb_keysym_t keysym) const
    {
        if (!m_reply || keycode < m_first || keycode >= m_first + m_count)
            return false;
        const int width = m_reply->keysyms_per_keycode;
        const xcb_keysym_t* keysyms =
            xcb_get_keyboard_mapping_keysyms(m_reply.get()) + (keycode - m_first) * width;
        for (int column = 0; column < width; ++column) {
            if (keysyms[column] == keysym)
                return true;
        }
        return false;
    }

private:
    int m_first;
    int m_count;
    XcbReply<xcb_get_keyboard_mapping_reply_t> m_reply;
};

} // namespace

ModifierMasks ModifierMasks::read(xcb_connection_t* connection)
{
    ModifierMasks masks;
    const XcbReply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!reply)
        return masks;
    const KeyboardMapping keyboard(connection);
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(reply.get());
    const int width = reply->keycodes_per_modifier;
    const auto maskOf = [&](xcb_keysym_t keysym) -> uint16_t {
        for (int modifier = kFirstFreeModifier; modifier < kModifiers; ++modifier) {
            for (int key = 0; key < width; ++key) {
                const xcb_keycode_t keycode = keycodes[modifier * width + key];
                if (keycode != 0 && keyboard.brings(keycode, keysym))
                    return static_cast<uint16_t>(1 << modifier);
            }
        }
        return 0;
    };
    const auto either = [&](xcb_keysym_t left, xcb_keysym_t right, uint16_t usual) {
        const uint16_t mask = maskOf(left) != 0 ? maskOf(left) : maskOf(right);
        return mask != 0 ? mask : usual;
    };
    masks.alt = either(kAltLeft, kAltRight, masks.alt);
    masks.super = either(kSuperLeft, kSuperRight, masks.super);
    masks.numLock = maskOf(kNumLock);
    return masks;
}

uint16_t ModifierMasks::fromClassic(quint32 modifiers) const
{
    unsigned mask = 0;
    if ((modifiers & kCommand) != 0)
        mask |= super;
    if ((modifiers & kShift) != 0)
        mask |= XCB_MOD_MASK_SHIFT;
    if ((modifiers & kOption) != 0)
        mask |= alt;
    if ((modifiers & kControl) != 0)
        mask |= XCB_MOD_MASK_CONTROL;
    return static_cast<uint16_t>(mask);
}

} // namespace tessary
