#include "ui/kit/Theme.h"
#include "ui/preview/Checkerboard.h"
#include "ui/preview/PictureCanvas.h"
#include "ui/preview/PictureTiles.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr int kCoarserShown = 4;    // levels beneath the one in view that are looked for
constexpr double kPixelsSeen = 2;   // from that magnification on, single pixels are to be seen
constexpr double kCornerShare = 16; // of a side: small pictures keep their corners

void paintShadow(QPainter& painter, const QRectF& place, double radius)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 6));
    for (int reach = 4; reach >= 1; --reach) // soft, and two pixels down
        painter.drawRoundedRect(place.adjusted(-reach, 2 - reach, reach, 2 + reach), radius + reach,
                                radius + reach);
}

} // namespace

void PictureCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_theme.colours().mat);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!base().isNull() && state() != State::Unavailable)
        paintPicture(painter);
    else if (isProgressVisible())
        paintProgress(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    m_focusRing.paint(painter, m_theme, rect(), 0);
}

void PictureCanvas::paintPicture(QPainter& painter) const
{
    const QRectF place = m_geometry.pictureRect();
    const double radius =
        std::min<double>(Theme::kControlRadius, std::min(place.width(), place.height()) / kCornerShare);
    paintShadow(painter, place, radius);
    painter.save();
    QPainterPath shape;
    shape.addRoundedRect(place, radius, radius);
    painter.setClipPath(shape);
    if (base().hasAlphaChannel())
        paintCheckerboard(painter, m_theme, place.intersected(rect()));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_geometry.magnification() < kPixelsSeen);
    painter.drawImage(place, base());
    if (state() == State::Shown)
        paintTiles(painter);
    painter.restore();
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(-0.5, -0.5, 0.5, 0.5), radius, radius);
}

/// On whole device pixels, so that there are no seams between the squares.
QRectF PictureCanvas::placeOf(const QRect& part) const
{
    const QRectF place = m_geometry.pictureRect();
    const double across = place.width() / m_geometry.picture().width();
    const double down = place.height() / m_geometry.picture().height();
    const double ratio = devicePixelRatioF();
    const auto snapped = [ratio](double x, double y) {
        return QPointF(std::round(x * ratio) / ratio, std::round(y * ratio) / ratio);
    };
    return {snapped(place.left() + part.left() * across, place.top() + part.top() * down),
            snapped(place.left() + (part.left() + part.width()) * across,
                    place.top() + (part.top() + part.height()) * down)};
}

void PictureCanvas::paintTiles(QPainter& painter) const
{
    const std::optional<Wanted> wanted = needed();
    if (!wanted)
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRectF visible = m_geometry.visiblePart();
    for (int level = wanted->level + kCoarserShown; level >= wanted->level; --level) {
        const QRect squares = PictureTiles::squares(level, visible);
        for (int row = squares.top(); row <= squares.bottom(); ++row) {
            for (int column = squares.left(); column <= squares.right(); ++column) {
                const QImage* tile = m_tiles.tile(path(), {level, QPoint(column, row)});
                if (tile == nullptr)
                    continue;
                const QRectF place =
                    placeOf(PictureTiles::part(level, QRect(column, row, 1, 1), m_geometry.picture()));
                if (tile->hasAlphaChannel())
                    paintCheckerboard(painter, m_theme, place);
                painter.drawImage(place, *tile);
            }
        }
    }
}

} // namespace tessary
