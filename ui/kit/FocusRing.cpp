#include "ui/kit/FocusRing.h"

#include "ui/kit/Theme.h"

#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

namespace tessary {

FocusRing::FocusRing(QWidget& control, QWidget& drawnOn) : m_drawnOn(drawnOn)
{
    control.installEventFilter(this);
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
            reason == Qt::ShortcutFocusReason)
            m_isVisible = true;
        m_drawnOn.update();
    } else if (event->type() == QEvent::FocusOut) {
        m_isVisible = false;
        m_drawnOn.update();
    }
    return QObject::eventFilter(watched, event);
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
