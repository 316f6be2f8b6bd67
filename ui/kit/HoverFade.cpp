#include "ui/kit/HoverFade.h"

#include "ui/kit/Theme.h"

#include <QEvent>
#include <QWidget>

namespace tessary {

HoverFade::HoverFade(const Theme& theme, QWidget& control) : m_theme(theme), m_control(control)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, &control,
                     [&control] { control.update(); });
    control.installEventFilter(this);
}

/// A hidden control gets no leave event.
bool HoverFade::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter)
        setHovered(m_control.isEnabled());
    else if (event->type() == QEvent::Leave || event->type() == QEvent::Hide)
        setHovered(false);
    return QObject::eventFilter(watched, event);
}

void HoverFade::setHovered(bool isHovered)
{
    if (m_isHovered == isHovered)
        return;
    m_isHovered = isHovered;
    const int duration = static_cast<int>(m_theme.duration(Theme::kFade).count());
    if (duration == 0) {
        m_control.update();
        return;
    }
    m_animation.setDuration(duration);
    m_animation.setDirection(isHovered ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    m_animation.start();
}

double HoverFade::value() const
{
    if (m_animation.state() == QAbstractAnimation::Running)
        return m_animation.currentValue().toDouble();
    return m_isHovered ? 1 : 0;
}

} // namespace tessary
