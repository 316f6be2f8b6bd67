#include "ui/preview/CanvasGeometry.h"

#include <algorithm>

namespace tessary {

void CanvasGeometry::setCanvas(const QSize& size, double devicePixelRatio)
{
    m_canvas = size;
    m_devicePixelRatio = devicePixelRatio;
    confine();
}

void CanvasGeometry::setPicture(const QSize& size)
{
    m_picture = size;
    confine();
}

QSizeF CanvasGeometry::fittedSize() const
{
    const QSizeF natural = QSizeF(m_picture) / m_devicePixelRatio;
    const QSizeF room = (m_canvas - QSizeF(2 * kInset, 2 * kInset)).expandedTo(QSizeF(1, 1));
    const bool isLarger = natural.width() > room.width() || natural.height() > room.height();
    return isLarger ? natural.scaled(room, Qt::KeepAspectRatio) : natural;
}

QRectF CanvasGeometry::pictureRect() const
{
    QRectF place(QPointF(), (fittedSize() * m_scale).expandedTo(QSizeF(1, 1)));
    place.moveCenter(QPointF(m_canvas.width() / 2, m_canvas.height() / 2) + m_offset);
    return place;
}

double CanvasGeometry::magnification() const
{
    return m_picture.isEmpty() ? 1 : pictureRect().width() * m_devicePixelRatio / m_picture.width();
}

QRectF CanvasGeometry::visiblePart() const
{
    const QRectF place = pictureRect();
    const QRectF shown = place.intersected(QRectF(QPointF(), m_canvas));
    if (shown.isEmpty() || m_picture.isEmpty())
        return {};
    const double across = m_picture.width() / place.width();
    const double down = m_picture.height() / place.height();
    return {(shown.left() - place.left()) * across, (shown.top() - place.top()) * down,
            shown.width() * across, shown.height() * down};
}

void CanvasGeometry::setScale(double scale, const QPointF& fixed)
{
    const QPointF centre(m_canvas.width() / 2, m_canvas.height() / 2);
    const QPointF fromCentre = fixed - centre;
    m_offset = fromCentre + (m_offset - fromCentre) * (scale / m_scale);
    m_scale = scale;
    confine();
}

void CanvasGeometry::moveBy(const QPointF& distance)
{
    m_offset += distance;
    confine();
}

bool CanvasGeometry::canMove() const
{
    const QSizeF size = pictureRect().size();
    return size.width() > m_canvas.width() || size.height() > m_canvas.height();
}

/// A side that the canvas has room for is centred; a longer one covers the canvas but for the inset.
void CanvasGeometry::confine()
{
    const QSizeF size = fittedSize() * m_scale;
    const auto confined = [](double offset, double length, double room) {
        const double reach = length <= room ? 0 : (length - room) / 2 + kInset;
        return std::clamp(offset, -reach, reach);
    };
    m_offset = {confined(m_offset.x(), size.width(), m_canvas.width()),
                confined(m_offset.y(), size.height(), m_canvas.height())};
}

} // namespace tessary
