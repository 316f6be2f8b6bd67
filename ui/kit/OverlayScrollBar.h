#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QWidget>

namespace tessary {

class Theme;

/// A thin scroll bar that lies over a scroll area and shows only while scrolling or under the pointer.
class OverlayScrollBar : public QWidget {
    Q_OBJECT
public:
    /// Takes the place of the area's own vertical scroll bar; owned by the area.
    OverlayScrollBar(const Theme& theme, QAbstractScrollArea& area);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void place();
    void appear();
    [[nodiscard]] QRectF knob() const;
    [[nodiscard]] double travel() const;

    const Theme& m_theme;
    QAbstractScrollArea& m_area;
    QBasicTimer m_rest;
    bool m_isShown = false;
    bool m_isHovered = false;
    double m_grip = 0; // where in the knob it was taken
};

} // namespace tessary
