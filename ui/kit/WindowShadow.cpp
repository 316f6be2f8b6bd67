#include "ui/kit/WindowShadow.h"

#include <QPainter>

#include <array>
#include <cmath>
#include <numbers>

namespace tessary {
namespace {

struct Layer {
    double offset; ///< Downwards.
    double blur;   ///< Twice the standard deviation.
    QColor colour;
};

/// How far outside a rounded rectangle around the origin a point is; negative inside.
double distance(double x, double y, double halfSide, double radius)
{
    const double dx = std::abs(x) - (halfSide - radius);
    const double dy = std::abs(y) - (halfSide - radius);
    const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return outside + std::min(std::max(dx, dy), 0.0) - radius;
}

/// Of a blurred edge, seen from that far outside of it.
double coverage(double outside, double blur)
{
    return 0.5 * std::erfc(outside / (blur / 2 * std::numbers::sqrt2));
}

double opacity(const Layer& layer, double x, double y, double halfSide, double radius)
{
    const double outside = distance(x, y - layer.offset, halfSide, radius);
    return layer.colour.alphaF() * coverage(outside, layer.blur);
}

/// How much of each corner of the body belongs to the picture.
int inset(int radius)
{
    return WindowShadow::kReach + radius;
}

} // namespace

void WindowShadow::render(int radius, const ThemeColours& colours, qreal devicePixelRatio)
{
    m_radius = radius;
    m_farColour = colours.farShadow;
    m_devicePixelRatio = devicePixelRatio;
    const std::array layers{Layer{12, 36, colours.farShadow}, Layer{3, 10, colours.nearShadow}};
    const double halfSide = inset(radius) + 0.5;
    const double wholeHalf = halfSide + kReach;
    const int side = static_cast<int>(std::lround(2 * wholeHalf * devicePixelRatio));
    m_corners = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < side; ++row) {
        auto* line = reinterpret_cast<QRgb*>(m_corners.scanLine(row));
        const double y = (row + 0.5) / devicePixelRatio - wholeHalf;
        for (int column = 0; column < side; ++column) {
            const double x = (column + 0.5) / devicePixelRatio - wholeHalf;
            double clear = 1;
            for (const Layer& layer : layers)
                clear *= 1 - opacity(layer, x, y, halfSide, radius);
            line[column] = qRgba(0, 0, 0, static_cast<int>(std::lround(255 * (1 - clear))));
        }
    }
}

void WindowShadow::paint(QPainter& painter, const QRect& body, int radius, const ThemeColours& colours,
                         qreal devicePixelRatio)
{
    if (m_corners.isNull() || m_radius != radius || m_farColour != colours.farShadow ||
        m_devicePixelRatio != devicePixelRatio)
        render(radius, colours, devicePixelRatio);
    const QRect whole = body.adjusted(-kReach, -kReach, kReach, kReach);
    const int corner = kReach + inset(radius); // logical; the picture is two of them and one more pixel
    const double scaled = corner * devicePixelRatio;
    const double middle = m_corners.width() - 2 * scaled;
    const std::array<double, 3> sourceStart{0, scaled, scaled + middle};
    const std::array<double, 3> sourceLength{scaled, middle, scaled};
    const auto pieces = [corner](int start, int length) {
        return std::array<std::pair<int, int>, 3>{
            {{start, corner}, {start + corner, length - 2 * corner}, {start + length - corner, corner}}};
    };
    const auto columns = pieces(whole.left(), whole.width());
    const auto rows = pieces(whole.top(), whole.height());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            if (row == 1 && column == 1)
                continue; // under the body
            const QRectF target(columns[column].first, rows[row].first, columns[column].second,
                                rows[row].second);
            const QRectF source(sourceStart[column], sourceStart[row], sourceLength[column],
                                sourceLength[row]);
            painter.drawImage(target, m_corners, source);
        }
    }
}

} // namespace tessary
