#pragma once

#include "platform/KeystrokeSender.h"

#include <memory>
#include <optional>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

namespace tessary {

/// Which physical keys paste with a layout; those that it lacks are absent.
struct PasteKeys {
    std::optional<xcb_keycode_t> control;
    std::optional<xcb_keycode_t> shift;
    std::optional<xcb_keycode_t> v; ///< That which brings a plain v, wherever it is.
    std::optional<xcb_keycode_t> insert;

    /// @param state of the keyboard; its active layout counts, its modifiers do not.
    [[nodiscard]] static PasteKeys find(xkb_state* state);
    /// Of the keyboard as the server has it now; nothing when it does not tell. Blocks for some round trips.
    /// @param connection on which the XKB extension was set up.
    [[nodiscard]] static std::optional<PasteKeys> read(xcb_connection_t* connection);

    /// The modifier and the key to press with it; nothing when the layout lacks one of them.
    struct Chord {
        xcb_keycode_t modifier;
        xcb_keycode_t key;
        friend bool operator==(const Chord&, const Chord&) = default;
    };
    [[nodiscard]] std::optional<Chord> chord(PasteKeystroke keystroke) const;
};

struct XkbRelease {
    void operator()(xkb_context* context) const noexcept { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const noexcept { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const noexcept { xkb_state_unref(state); }
};
template <typename Object>
using XkbPointer = std::unique_ptr<Object, XkbRelease>;

} // namespace tessary
