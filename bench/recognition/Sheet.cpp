#include "bench/recognition/Sheet.h"

#include "ui/kit/Symbol.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <array>
#include <cmath>

namespace tessary::bench {
namespace {

constexpr int kTallest = 1200;
constexpr int kStripes = 3;

QImage blank(int width, int scale, const QColor& background)
{
    QImage image(width, kTallest * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(background);
    return image;
}

/// Each colour of a pixel is seen through its own stripe and a little of the neighbours, which is how font
/// renderers keep the fringes faint. Qt draws subpixel text on windows only, hence by hand.
QImage throughStripes(const QImage& wide)
{
    constexpr std::array kWeights{0x08, 0x4D, 0x56, 0x4D, 0x08};
    constexpr int kSum = 0x100;
    QImage image(wide.width() / kStripes, wide.height(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(wide.constScanLine(y));
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            std::array<int, kStripes> colour{};
            for (int stripe = 0; stripe < kStripes; ++stripe)
                for (int tap = 0; tap < static_cast<int>(kWeights.size()); ++tap) {
                    const QRgb seen = from[std::clamp(x * kStripes + stripe + tap - 2, 0, wide.width() - 1)];
                    const int value = stripe == 0 ? qRed(seen) : stripe == 1 ? qGreen(seen) : qBlue(seen);
                    colour.at(static_cast<size_t>(stripe)) += kWeights.at(static_cast<size_t>(tap)) * value;
                }
            to[x] = qRgb(colour[0] / kSum, colour[1] / kSum, colour[2] / kSum);
        }
    }
    return image;
}

void layOut(QTextLayout& layout, qreal width, qreal lineHeight)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    qreal top = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, std::round(top)});
        top += line.height() * lineHeight / 1.2;
    }
    layout.endLayout();
}

qreal bottomOf(const QTextLayout& layout)
{
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    return last.y() + last.height();
}

} // namespace

Sheet::Sheet(int width, const Look& look, const QColor& background)
    : m_width(width),
      m_scale(look.scale),
      m_stripes(look.smoothing == Smoothing::Subpixel ? kStripes : 1),
      m_image(blank(width * look.scale * m_stripes, look.scale, background)),
      m_painter(&m_image)
{
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.scale(m_stripes, 1);
}

qreal Sheet::heightOf(const QString& text, const QFont& font, qreal width, qreal lineHeight) const
{
    QTextLayout layout(text, font, &m_image);
    layOut(layout, width, lineHeight);
    return bottomOf(layout);
}

qreal Sheet::paragraph(QPointF topLeft, qreal width, const QString& text, const QFont& font,
                       const QColor& colour, qreal lineHeight)
{
    endRow();
    QTextLayout layout(text, font, &m_image);
    layOut(layout, width, lineHeight);
    m_painter.setPen(colour);
    layout.draw(&m_painter, topLeft);
    for (int index = 0; index < layout.lineCount(); ++index) {
        const QTextLine line = layout.lineAt(index);
        m_truth.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    return bottomOf(layout);
}

qreal Sheet::word(QPointF leftCentre, const QString& text, const QFont& font, const QColor& colour)
{
    const QFontMetricsF metrics(font, &m_image);
    m_painter.setFont(font);
    m_painter.setPen(colour);
    m_painter.drawText(
        QPointF(leftCentre.x(), std::round(leftCentre.y() + (metrics.ascent() - metrics.descent()) / 2)),
        text);
    m_row.append(text);
    return metrics.horizontalAdvance(text);
}

void Sheet::endRow()
{
    if (!m_row.isEmpty())
        m_truth.append(m_row.join(u' '));
    m_row.clear();
}

void Sheet::note(const QString& line)
{
    endRow();
    m_truth.append(line);
}

void Sheet::symbol(QPointF leftCentre, const QString& name, int size, const QColor& colour)
{
    m_painter.drawPixmap(leftCentre - QPointF(0, size / 2.0),
                         Symbol(name).pixmap(size, colour, static_cast<qreal>(m_scale)));
}

void Sheet::box(const QRectF& area, qreal radius, const QColor& fill, const QColor& edge)
{
    m_painter.setPen(edge.isValid() ? QPen(edge, 1) : QPen(Qt::NoPen));
    m_painter.setBrush(fill);
    m_painter.drawRoundedRect(area, radius, radius);
    m_painter.setBrush(Qt::NoBrush);
}

QImage Sheet::finish(qreal height)
{
    endRow();
    m_painter.end();
    const int rows = std::min(static_cast<int>(std::ceil(height)), kTallest) * m_scale;
    const QImage cut = m_image.copy(0, 0, m_image.width(), rows);
    return m_stripes == 1 ? cut : throughStripes(cut);
}

} // namespace tessary::bench
