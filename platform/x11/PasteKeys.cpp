#include "platform/x11/PasteKeys.h"

#include <algorithm>
#include <limits>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace tessary {
namespace {

/// What the key brings without any modifier, in the layout that is active for it.
xkb_keysym_t plainKeysym(xkb_keymap* keymap, xkb_state* state, xkb_keycode_t key)
{
    const xkb_layout_index_t layout = xkb_state_key_get_layout(state, key);
    const xkb_keysym_t* keysyms = nullptr;
    if (layout == XKB_LAYOUT_INVALID)
        return XKB_KEY_NoSymbol;
    return xkb_keymap_key_get_syms_by_level(keymap, key, layout, 0, &keysyms) == 1 ? *keysyms
                                                                                   : xkb_keysym_t{};
}

} // namespace

PasteKeys PasteKeys::find(xkb_state* state)
{
    PasteKeys keys;
    xkb_keymap* keymap = xkb_state_get_keymap(state);
    // The protocol's key codes end here.
    const xkb_keycode_t last =
        std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), std::numeric_limits<xcb_keycode_t>::max());
    const auto note = [](std::optional<xcb_keycode_t>& found, xkb_keycode_t key) {
        if (!found)
            found = static_cast<xcb_keycode_t>(key);
    };
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        switch (plainKeysym(keymap, state, key)) {
        case XKB_KEY_Control_L:
        case XKB_KEY_Control_R:
            note(keys.control, key);
            break;
        case XKB_KEY_Shift_L:
        case XKB_KEY_Shift_R:
            note(keys.shift, key);
            break;
        case XKB_KEY_v:
            note(keys.v, key);
            break;
        case XKB_KEY_Insert:
            note(keys.insert, key);
            break;
        default:
            break;
        }
    }
    return keys;
}

std::optional<PasteKeys> PasteKeys::read(xcb_connection_t* connection)
{
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    if (!context || device < 0)
        return std::nullopt;
    const XkbPointer<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        return std::nullopt;
    const XkbPointer<xkb_state> state(xkb_x11_state_new_from_device(keymap.get(), connection, device));
    if (!state)
        return std::nullopt;
    return find(state.get());
}

std::optional<PasteKeys::Chord> PasteKeys::chord(PasteKeystroke keystroke) const
{
    const bool isControlV = keystroke == PasteKeystroke::ControlV;
    const std::optional<xcb_keycode_t> modifier = isControlV ? control : shift;
    const std::optional<xcb_keycode_t> key = isControlV ? v : insert;
    if (!modifier || !key)
        return std::nullopt;
    return Chord{*modifier, *key};
}

} // namespace tessary
