#pragma once

#include <QObject>

class QPainter;
class QRectF;
class QWidget;

namespace tessary {

class Theme;

/// The ring around the control that has the keyboard's focus. It shows when the keyboard brought the focus,
/// and follows that by itself.
class FocusRing : public QObject {
public:
    explicit FocusRing(QWidget& control) : FocusRing(control, control) {}
    /// @param drawnOn repainted when the ring comes or goes: what the control lies on.
    FocusRing(QWidget& control, QWidget& drawnOn);

    [[nodiscard]] bool isVisible() const { return m_isVisible; }
    /// Draws it just inside the rectangle.
    void paint(QPainter& painter, const Theme& theme, const QRectF& rectangle, double radius) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_drawnOn;
    bool m_isVisible = false;
};

} // namespace tessary
