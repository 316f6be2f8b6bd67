#pragma once

#include "ui/kit/WindowShadow.h"

#include <QWidget>

#include <optional>

namespace tessary {

class Theme;

/// A window without the desktop's frame, with round corners: translucent around its shadow where a
/// compositor runs, otherwise cut out by a mask and with an edge drawn inside.
///
/// What it shows goes into `body()`, which leaves the corners to the window. It moves when its empty parts
/// are dragged.
class FramedWindow : public QWidget {
    Q_OBJECT
public:
    FramedWindow(const Theme& theme, int radius, Qt::WindowFlags flags);

    [[nodiscard]] QWidget& body() { return *m_body; }
    /// Whether a compositor runs. Takes the native window down and up again when it changes; to be called
    /// while hidden.
    void setComposited(bool isComposited);
    [[nodiscard]] bool isComposited() const { return m_isComposited; }
    /// How much the window is larger than its body, on each side.
    [[nodiscard]] int margin() const { return m_isComposited ? WindowShadow::kReach : 0; }
    void setFixedBodySize(const QSize& size);
    /// Instead of a fixed size: the edges of the body resize it, within these.
    void setBodySizes(const QSize& size, const QSize& smallest, const QSize& largest);
    void moveBody(const QPoint& topLeft);
    [[nodiscard]] QRect bodyGeometry() const { return m_body->geometry().translated(pos()); }

    /// Whether the window manager may have the keyboard because it moves the window.
    [[nodiscard]] bool isMoving() const { return m_isMoving; }

Q_SIGNALS:
    /// The part of the window that takes the pointer changed, as it is after showing; logical pixels.
    void bodyPlaced(const QRect& body);

protected:
    bool event(QEvent* event) override;
    [[nodiscard]] const Theme& theme() const { return m_theme; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void layOut();
    [[nodiscard]] Qt::Edges edgesAt(const QPoint& position) const;
    void showEdgeCursor(const QPoint& position);

    struct Sizes {
        QSize smallest;
        QSize largest;
    };

    const Theme& m_theme;
    int m_radius;
    std::optional<Sizes> m_sizes; // of the body, where its edges resize it
    bool m_isComposited = false;
    bool m_isMoving = false;
    std::optional<QPoint> m_grip; // where an empty part was pressed
    QWidget* m_body;
    QWidget* m_edge; // on top of everything, where there is no shadow
    WindowShadow m_shadow;
};

} // namespace tessary
