#pragma once

#include <QHashFunctions>
#include <QString>
#include <Qt>

#include <optional>

namespace tessary {

/// One key combination and its text form. Without a key it is disabled.
struct HotKeyShortcut {
    /// Bits of the modifier mask.
    enum Modifier : quint32 { Command = 0x100, Shift = 0x200, Option = 0x800, Control = 0x1000 };

    std::optional<quint32> keyCode; ///< Classic virtual key code.
    quint32 modifiers = 0;
    QString keyLabel; ///< What the key is called: "Space", "R", "↩".

    /// "disabled", or "v2|" with key code, modifiers and label.
    [[nodiscard]] QString rawValue() const;
    /// Reads that form and the names that earlier versions wrote; nothing for any other text.
    [[nodiscard]] static std::optional<HotKeyShortcut> fromRawValue(const QString& text);
    [[nodiscard]] QString id() const { return rawValue(); }
    [[nodiscard]] bool isDisabled() const { return !keyCode; }
    /// The symbols of the modifiers in the order ⌃ ⌥ ⇧ ⌘.
    [[nodiscard]] QString modifierTitle() const;

    /// The mask for a key event's modifiers: Control, Alt as option, Shift, Meta (Super) as command.
    /// @returns nothing when none of the four is held.
    [[nodiscard]] static std::optional<quint32> carbonModifiers(Qt::KeyboardModifiers modifiers);
    /// @param characters what the key brings forth without modifiers; may be empty.
    [[nodiscard]] static QString label(quint32 keyCode, const QString& characters);

    friend bool operator==(const HotKeyShortcut&, const HotKeyShortcut&) = default;
    friend size_t qHash(const HotKeyShortcut& shortcut, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, shortcut.keyCode.has_value(), shortcut.keyCode.value_or(0),
                          shortcut.modifiers, shortcut.keyLabel);
    }
};

} // namespace tessary

template <>
struct std::hash<tessary::HotKeyShortcut> {
    size_t operator()(const tessary::HotKeyShortcut& shortcut) const noexcept { return qHash(shortcut); }
};
