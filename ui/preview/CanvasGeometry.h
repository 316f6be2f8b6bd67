#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace tessary {

/// Where a picture lies on the canvas: fitted and centred at first, then as large as it is zoomed and where
/// it was moved to. Logical pixels; never moved further than its edges.
class CanvasGeometry {
public:
    static constexpr int kInset = 24; ///< Around the picture that is fitted.

    void setCanvas(const QSize& size, double devicePixelRatio);
    /// In its own pixels, upright.
    void setPicture(const QSize& size);
    [[nodiscard]] const QSize& picture() const { return m_picture; }
    [[nodiscard]] double scale() const { return m_scale; }

    /// What lies under `fixed` stays there.
    void setScale(double scale, const QPointF& fixed);
    void moveBy(const QPointF& distance);
    [[nodiscard]] bool canMove() const;

    [[nodiscard]] QRectF pictureRect() const;
    /// How large the picture is at scale 1: no larger than the canvas has room for, nor than its own pixels.
    [[nodiscard]] QSizeF fittedSize() const;
    /// The part of the picture that is in view, in its own pixels.
    [[nodiscard]] QRectF visiblePart() const;
    /// How many device pixels one of the picture's own is wide.
    [[nodiscard]] double magnification() const;

private:
    void confine();

    QSizeF m_canvas;
    double m_devicePixelRatio = 1;
    QSize m_picture;
    double m_scale = 1;
    QPointF m_offset; // of the picture's centre from the canvas's
};

} // namespace tessary
