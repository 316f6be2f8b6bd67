#pragma once

#include <QString>

namespace tessary {

/// A mark for a program that is asked to show something because the person just did something here: it
/// carries the server's present time, so that a window manager lets its window come to the front.
/// Opens a connection of its own and waits for the server: not for the main thread.
/// @returns an empty text without a server.
[[nodiscard]] QString x11StartupIdentifier();

} // namespace tessary
