#pragma once

#include <QKeyEvent>

namespace tessary {

/// What a key press means to the panel, by its key alone.
enum class PanelKey {
    Other,
    Modifier, ///< Shift and the like, pressed alone.
    Up,
    Down,
    Return, ///< That of the keypad too.
    Space,
    Backspace,
    Escape,
    C,
    Y,
    O,
    D,
    P,
};

/// Letters are taken by what they are labelled; where the layout has no Latin letters, by their place on
/// a US keyboard.
[[nodiscard]] PanelKey panelKey(const QKeyEvent& event);

} // namespace tessary
