#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

/// At most 4 KiB of a property of format 8, whatever its type; nothing when the window or the property does
/// not exist. Blocks for a round trip.
[[nodiscard]] std::optional<QByteArray> textProperty(xcb_connection_t* connection, xcb_window_t window,
                                                     xcb_atom_t property);

/// The words of a property of format 32 and that type; empty when the window or the property does not exist.
/// Blocks for a round trip.
[[nodiscard]] std::vector<uint32_t> wordsProperty(xcb_connection_t* connection, xcb_window_t window,
                                                  xcb_atom_t property, xcb_atom_t type);

} // namespace tessary
