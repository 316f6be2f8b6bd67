#pragma once

#include <QFocusEvent>

class QPainter;
class QRectF;

namespace tessary {

class Theme;

/// The ring around the control that has the keyboard's focus. It shows when the keyboard brought the focus.
class FocusRing {
public:
    void focusIn(const QFocusEvent& event);
    void focusOut() { m_isVisible = false; }
    [[nodiscard]] bool isVisible() const { return m_isVisible; }
    /// Draws it just inside the rectangle.
    void paint(QPainter& painter, const Theme& theme, const QRectF& rectangle, double radius) const;

private:
    bool m_isVisible = false;
};

} // namespace tessary
