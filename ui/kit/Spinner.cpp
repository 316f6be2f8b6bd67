#include "ui/kit/Spinner.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr int kBox = 32;
constexpr int kDiameter = 20;
constexpr int kSteps = 24;
constexpr auto kStepTime = 40ms;
constexpr int kFullCircle = 360 * 16; // as QPainter counts

} // namespace

Spinner::Spinner(const Theme& theme, QWidget* parent) : QWidget(parent), m_theme(theme)
{
    setFixedSize(kBox, kBox);
    connect(&theme, &Theme::changed, this, &Spinner::followTheme);
}

void Spinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = (kBox - kDiameter) / 2.0 + 1;
    const QRectF circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setPen(QPen(m_theme.colours().hairline, 2));
    painter.drawEllipse(circle);
    painter.setPen(QPen(m_theme.colours().secondaryText, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -m_step * kFullCircle / kSteps, kFullCircle / 4);
}

void Spinner::followTheme()
{
    if (!isVisible() || m_theme.duration(kStepTime) == 0ms)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(static_cast<int>(kStepTime.count()), this);
    update();
}

void Spinner::showEvent(QShowEvent*)
{
    followTheme();
}

void Spinner::hideEvent(QHideEvent*)
{
    m_timer.stop();
}

void Spinner::timerEvent(QTimerEvent*)
{
    m_step = (m_step + 1) % kSteps;
    update();
}

} // namespace tessary
