#pragma once

#include <chrono>

namespace tessary {

/// How long a key is held until the server repeats it for the first time; the person may change that at any
/// time. Any thread; takes a connection of its own, since one that speaks of keyboards in these terms is no
/// longer told of new keyboards in the old ones. Without an answer: as soon as any keyboard repeats.
[[nodiscard]] std::chrono::milliseconds keyRepeatDelay();

} // namespace tessary
