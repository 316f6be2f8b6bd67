#pragma once

#include "bench/recognition/Look.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QStringList>

namespace tessary::bench {

/// A picture in the making that notes what is written on it. Lengths in logical pixels.
class Sheet {
public:
    /// High enough for anything; `finish` cuts it.
    Sheet(int width, const Look& look, const QColor& background);

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] QPainter& painter() { return m_painter; }

    /// Breaks the text into lines of at most `width`. @returns its height.
    [[nodiscard]] qreal heightOf(const QString& text, const QFont& font, qreal width, qreal lineHeight) const;
    /// Writes it, each line one of the truth. @returns the height used.
    qreal paragraph(QPointF topLeft, qreal width, const QString& text, const QFont& font,
                    const QColor& colour, qreal lineHeight = 1.4);
    /// Writes one line that ends where it ends, vertically centred in the row. @returns its width.
    qreal word(QPointF leftCentre, const QString& text, const QFont& font, const QColor& colour);
    /// What follows belongs to the line of the truth that `word` began, until the next `endRow`.
    void endRow();
    /// A line of the truth that the caller draws itself.
    void note(const QString& line);
    void symbol(QPointF leftCentre, const QString& name, int size, const QColor& colour);
    void box(const QRectF& area, qreal radius, const QColor& fill, const QColor& edge = {});

    [[nodiscard]] QString truth() const { return m_truth.join(u'\n'); }
    [[nodiscard]] QImage finish(qreal height);

private:
    const int m_width;
    const int m_scale;
    const int m_stripes; ///< Columns of the picture in the making to one of the finished one.
    QImage m_image;
    QPainter m_painter;
    QStringList m_truth;
    QStringList m_row;
};

} // namespace tessary::bench
