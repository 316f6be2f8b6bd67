#include "ui/quicksearch/RowFade.h"

#include "ui/kit/Theme.h"

#include <utility>

namespace tessary {

RowFade::RowFade(const Theme& theme, QObject* parent) : QObject(parent), m_theme(theme)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, &RowFade::tell);
    connect(&m_animation, &QAbstractAnimation::finished, this, &RowFade::tell);
}

void RowFade::moveTo(const QModelIndex& index, Way way)
{
    if (m_current == index)
        return;
    m_animation.stop();
    tell(); // what was fading out is out
    m_last = std::exchange(m_current, QPersistentModelIndex(index));
    const int duration = static_cast<int>(m_theme.duration(Theme::kFade).count());
    if (way == Way::Fade && duration > 0) {
        m_animation.setDuration(duration);
        m_animation.start();
    }
    tell();
}

double RowFade::progress() const
{
    return m_animation.state() == QAbstractAnimation::Running ? m_animation.currentValue().toDouble() : 1;
}

double RowFade::of(const QModelIndex& index) const
{
    if (!index.isValid())
        return 0;
    if (m_current == index)
        return progress();
    return m_last == index ? 1 - progress() : 0;
}

void RowFade::tell()
{
    for (const QPersistentModelIndex& index : {m_current, m_last}) {
        if (index.isValid())
            Q_EMIT changed(index);
    }
}

} // namespace tessary
