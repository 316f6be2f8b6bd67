#pragma once

#include <Qt>

class QFont;
class QPainter;
class QRect;
class QString;

namespace tessary {

/// Where the baseline of one line of text lies that is centred in the rectangle, by the font's own
/// measures: characters from fallback fonts, whose lines are taller, do not move it.
[[nodiscard]] int centredBaseline(const QFont& font, const QRect& area);

/// Draws one line with the painter's font and pen, on that baseline. It is not clipped.
void drawSingleLine(QPainter& painter, const QRect& area, const QString& text,
                    Qt::Alignment alignment = Qt::AlignLeft);

} // namespace tessary
