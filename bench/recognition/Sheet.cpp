#include "bench/recognition/Sheet.h"

#include "ui/kit/Symbol.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>

#include <cmath>

namespace tessary::bench {
namespace {

constexpr int kTallest = 1200;

QImage blank(int width, int scale, const QColor& background)
{
    // Opaque, or text would not have its subpixel colours.
    QImage image(width * scale, kTallest * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(background);
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

Sheet::Sheet(int width, int scale, const QColor& background)
    : m_width(width),
      m_scale(scale),
      m_image(blank(width, scale, background)),
      m_painter(&m_image)
{
    m_painter.setRenderHint(QPainter::Antialiasing);
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
    return m_image.copy(0, 0, m_image.width(),
                        std::min(static_cast<int>(std::ceil(height)), kTallest) * m_scale);
}

} // namespace tessary::bench
