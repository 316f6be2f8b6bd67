#include "ui/kit/FocusRing.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

void FocusRing::focusIn(const QFocusEvent& event)
{
    const Qt::FocusReason reason = event.reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
        m_isVisible = true;
}

void FocusRing::paint(QPainter& painter, const Theme& theme, const QRectF& rectangle, double radius) const
{
    constexpr double kWidth = 2;
    if (!m_isVisible)
        return;
    painter.setPen(QPen(theme.colours().accentText, kWidth));
    painter.setBrush(Qt::NoBrush);
    const double inset = kWidth / 2;
    painter.drawRoundedRect(rectangle.adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace tessary
