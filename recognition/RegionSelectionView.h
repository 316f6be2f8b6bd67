#pragma once

#include <QImage>
#include <QWidget>

#include <functional>

namespace tessary {

class Theme;

/// One dimmed screen, on which a rectangle is dragged. Points are logical pixels from its top left.
class RegionSelectionView : public QWidget {
    Q_OBJECT
public:
    /// @param picture what the screen shows; drawn over the whole view.
    RegionSelectionView(const Theme& theme, QImage picture, QWidget* parent);

    std::function<void(QRectF)> onSelection; ///< A rectangle of at least 4 × 4 was dragged.
    std::function<void()> onCancel;

    // What the pointer does; points outside count as the nearest one inside.
    void mouseDown(const QPointF& point);
    void mouseDragged(const QPointF& point);
    void mouseUp(const QPointF& point);

    /// Spanned by where the drag began and where it is; empty before the first.
    [[nodiscard]] QRectF selection() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void moveTo(const QPointF& startPoint, const QPointF& currentPoint);
    [[nodiscard]] QPointF inside(const QPointF& point) const;
    [[nodiscard]] QString sizeText() const;
    [[nodiscard]] QRectF labelRect() const;
    /// Where the outline and the label are.
    [[nodiscard]] QRegion drawnAround() const;
    void drawInstruction(QPainter& painter) const;
    void drawSelection(QPainter& painter) const;
    void drawLabel(QPainter& painter) const;

    const Theme& m_theme;
    QImage m_picture;
    QPointF m_startPoint;
    QPointF m_currentPoint;
};

} // namespace tessary
