#pragma once

#include <vector>

#include <xcb/xcb.h>

namespace tessary {

// Each asks the server and waits for it.

/// The modifier keys that are down, as programs see it; locks are none.
[[nodiscard]] std::vector<xcb_keycode_t> heldModifiers(xcb_connection_t* connection);

/// Those of the keys that are down on a keyboard, whatever has been typed in the person's stead. Synthesised
/// key strokes come from a keyboard of their own, so the state of the others is that of the fingers.
[[nodiscard]] std::vector<xcb_keycode_t> physicallyHeld(xcb_connection_t* connection,
                                                        const std::vector<xcb_keycode_t>& keys);

} // namespace tessary
