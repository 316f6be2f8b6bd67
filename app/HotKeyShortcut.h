#pragma once

#include <QString>
#include <Qt>

#include <optional>

namespace tessary {

/// Modifier bits of the classic event-manager encoding.
namespace HotKeyModifier {
inline constexpr quint32 kCommand = 0x100;
inline constexpr quint32 kShift = 0x200;
inline constexpr quint32 kOption = 0x800;
inline constexpr quint32 kControl = 0x1000;
} // namespace HotKeyModifier

/// One global key combination, or none. Copy it, compare it, store it as text.
struct HotKeyShortcut {
    std::optional<quint32> keyCode; ///< Classic virtual key code; absent when disabled.
    quint32 modifiers = 0;          ///< Classic mask.
    QString keyLabel;               ///< What is shown for the key.

    /// "disabled", or "v2|key code|modifiers|label".
    [[nodiscard]] QString rawValue() const;
    /// Reads the text form and the names of earlier ones. @returns nothing for any other text.
    [[nodiscard]] static std::optional<HotKeyShortcut> fromRawValue(const QString& text);
    /// The symbols of the modifiers, in the order ⌃ ⌥ ⇧ ⌘.
    [[nodiscard]] QString modifierTitle() const;
    [[nodiscard]] bool isDisabled() const { return !keyCode.has_value(); }

    /// The mask of a key event's modifiers as they are on the keyboard (Super is ⌘, Alt is ⌥); nothing
    /// when none of the four is held.
    [[nodiscard]] static std::optional<quint32> carbonModifiers(Qt::KeyboardModifiers modifiers);
    /// @param characters what the key gives without modifiers.
    [[nodiscard]] static QString label(quint32 keyCode, const QString& characters);

    friend bool operator==(const HotKeyShortcut&, const HotKeyShortcut&) = default;
};

[[nodiscard]] size_t qHash(const HotKeyShortcut& shortcut, size_t seed = 0) noexcept;

} // namespace tessary
