#pragma once

class QPainter;
class QRect;

namespace tessary {

class Theme;

/// The room of a control that takes text: the window's colour within an edge, or within a line of the accent
/// colour while it has the keyboard. 32 pixels high at least.
struct FieldFrame {
    static constexpr int kHeight = 32; ///< Of one line, before the person's text size.
    static constexpr int kPadding = 10;

    static void paint(QPainter& painter, const Theme& theme, const QRect& area, bool hasFocus);
};

} // namespace tessary
