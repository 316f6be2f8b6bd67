#pragma once

#include <QtGlobal>

#include <cstdint>

#include <xcb/xcb.h>

namespace tessary {

/// Which of the server's modifiers are Alt, Super and Num Lock at the moment.
struct ModifierMasks {
    uint16_t alt = XCB_MOD_MASK_1;
    uint16_t super = XCB_MOD_MASK_4;
    uint16_t numLock = 0; ///< 0 when no modifier is.

    /// Asks the server; the usual ones stand in for what it does not know. Blocks for two round trips.
    [[nodiscard]] static ModifierMasks read(xcb_connection_t* connection);
    /// @param modifiers classic mask: command 256, shift 512, option 2048, control 4096.
    [[nodiscard]] uint16_t fromClassic(quint32 modifiers) const;

    friend bool operator==(const ModifierMasks&, const ModifierMasks&) = default;
};

} // namespace tessary
