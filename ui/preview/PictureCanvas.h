#pragma once

#include "ui/kit/AsyncFileImage.h"
#include "ui/kit/FocusRing.h"
#include "ui/preview/CanvasGeometry.h"

#include <QBasicTimer>

class QGestureEvent;
class QNativeGestureEvent;

namespace tessary {

class EmptyState;
class PictureTiles;
class Theme;

/// A picture to look at closely: fitted at first, zoomed about the pointer and moved by dragging, wheel and
/// arrow keys.
///
/// What is painted at first is the picture at the canvas's size. Where it is zoomed further than that, the
/// parts in view are loaded once the view rests, all that are missing by one request; until they are there
/// the nearest coarser ones are shown.
class PictureCanvas : public AsyncFileImage {
    Q_OBJECT
public:
    /// @param tiles outlive this.
    PictureCanvas(const Theme& theme, Loader loader, ImagePartLoader partLoader, PictureTiles& tiles,
                  QWidget* parent = nullptr);

    /// @param pixelSize of the picture as its header has it, perhaps lying on its side.
    void setPicture(const QString& path, const QString& thumbnailPath, const QSize& pixelSize);
    [[nodiscard]] double scale() const { return m_geometry.scale(); }
    /// About the middle.
    void setScale(double scale);
    [[nodiscard]] QRectF pictureRect() const { return m_geometry.pictureRect(); }
    /// Whether all that is in view is as sharp as the picture and the screen allow.
    [[nodiscard]] bool isSharp() const;

Q_SIGNALS:
    void scaleChanged(double scale);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Wanted {
        int level = 0;
        QRect squares;
    };

    void loadStandIn(const QString& path);
    void takeShape(const QImage& image);
    void zoomTo(double scale, const QPointF& fixed);
    void moveBy(const QPointF& distance);
    void viewChanged();
    void showCursor();
    [[nodiscard]] bool pinch(const QGestureEvent& event);
    [[nodiscard]] bool pinch(const QNativeGestureEvent& event);

    /// The missing squares in view; nothing where what there is will do.
    [[nodiscard]] std::optional<Wanted> missing() const;
    [[nodiscard]] std::optional<Wanted> needed() const;
    void askForParts();

    [[nodiscard]] const QImage& base() const { return image().isNull() ? m_standIn : image(); }
    [[nodiscard]] int wantedPixels() const;
    void paintPicture(QPainter& painter) const;
    void paintTiles(QPainter& painter) const;
    [[nodiscard]] QRectF placeOf(const QRect& part) const;

    const Theme& m_theme;
    Loader m_loader;
    ImagePartLoader m_partLoader;
    PictureTiles& m_tiles;
    EmptyState* m_missing;
    CanvasGeometry m_geometry;
    QSize m_pixelSize;
    QImage m_standIn;
    quint64 m_ticket = 0; // of the picture; answers for another one are dropped
    bool m_isAsking = false;
    bool m_lacksParts = false; // they could not be had
    QBasicTimer m_rest;
    std::optional<QPointF> m_grip; // where it is being dragged
    FocusRing m_focusRing{*this};
};

} // namespace tessary
