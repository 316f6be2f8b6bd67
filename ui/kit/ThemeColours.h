#pragma once

#include <QColor>

#include <optional>

namespace tessary {

/// Every colour the windows are drawn with, in one appearance.
struct ThemeColours {
    QColor window;
    QColor surface; ///< Lists, cards, menus.
    QColor raised;  ///< Hovered rows, tiles, key caps.
    QColor pressed;
    QColor mat; ///< Behind pictures.
    QColor hairline;
    QColor edge;      ///< Of controls, windows, menus.
    QColor solidEdge; ///< Of windows that nothing shines through.
    QColor text;
    QColor secondaryText;
    QColor placeholderText;
    QColor tertiary;   ///< Symbols and disabled text.
    QColor accent;     ///< As a fill.
    QColor accentText; ///< Text, caret and focus ring in the accent colour.
    QColor accentTint; ///< Behind what is switched on.
    QColor accentTintHover;
    QColor onAccent;
    QColor secondaryOnAccent;
    QColor warning;
    QColor warningFill;
    QColor danger;
    QColor success;
    QColor successFill;
    QColor keyCapLine;
    QColor switchedOff; ///< Of a switch.
    QColor pictureLine; ///< Around thumbnails.
    QColor nearShadow;
    QColor farShadow;
};

/// The colours in light or dark, around the desktop's accent colour where it has one.
///
/// A desktop's accent is moved, 4 % of lightness at a time, until text in it, or white on it, has a
/// contrast of 4.5 : 1.
[[nodiscard]] ThemeColours themeColours(bool isDark, const std::optional<QColor>& accent);

/// How well two opaque colours stand out from each other, 1 to 21: WCAG 2.1's contrast ratio.
[[nodiscard]] double contrastRatio(const QColor& first, const QColor& second);

} // namespace tessary
