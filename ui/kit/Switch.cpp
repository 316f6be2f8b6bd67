#include "ui/kit/Switch.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kWidth = 36;
constexpr int kHeight = 20;
constexpr int kKnob = 16;
constexpr int kInset = 2;
constexpr double kDisabledOpacity = 0.5;

} // namespace

Switch::Switch(const Theme& theme, QWidget* parent) : QCheckBox(parent), m_theme(theme)
{
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant& place) {
        m_place = place.toDouble();
        update();
    });
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QSize Switch::sizeHint() const
{
    return {kWidth + 2 * kRing, kHeight + 2 * kRing};
}

bool Switch::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void Switch::checkStateSet()
{
    QCheckBox::checkStateSet();
    slide();
}

void Switch::nextCheckState()
{
    QCheckBox::nextCheckState();
    slide();
}

void Switch::slide()
{
    const double target = isChecked() ? 1 : 0;
    const int duration = isVisible() ? static_cast<int>(m_theme.duration(Theme::kFade).count()) : 0;
    m_slide.stop();
    if (duration == 0 || qFuzzyCompare(m_place + 1, target + 1)) {
        m_place = target;
        update();
        return;
    }
    m_slide.setStartValue(m_place);
    m_slide.setEndValue(target);
    m_slide.setDuration(duration);
    m_slide.start();
}

void Switch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setOpacity(isEnabled() ? 1 : kDisabledOpacity);
    const ThemeColours& colours = m_theme.colours();
    const QRectF track(kRing, (height() - kHeight) / 2.0, kWidth, kHeight);
    painter.setBrush(isChecked() ? colours.accent : colours.switchedOff);
    painter.drawRoundedRect(track, kHeight / 2.0, kHeight / 2.0);
    const double travel = kWidth - kKnob - 2 * kInset;
    const double place = layoutDirection() == Qt::RightToLeft ? 1 - m_place : m_place;
    const QRectF knob(track.left() + kInset + travel * place, track.top() + kInset, kKnob, kKnob);
    painter.setBrush(QColor(0, 0, 0, 40)); // a shadow
    painter.drawEllipse(knob.translated(0, 1));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);
    painter.setOpacity(1);
    m_focusRing.paint(painter, m_theme, track.adjusted(-kRing, -kRing, kRing, kRing), kHeight / 2.0 + kRing);
}

} // namespace tessary
