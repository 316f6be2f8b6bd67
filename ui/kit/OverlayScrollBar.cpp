#include "ui/kit/OverlayScrollBar.h"

#include "ui/kit/Theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kRest = 900;  // milliseconds
constexpr int kTarget = 12; // how wide the pointer finds it
constexpr int kThin = 4;
constexpr int kWide = 8;
constexpr int kFromEdge = 2;
constexpr double kShortestKnob = 24;
constexpr float kOpacity = 0.55F;

} // namespace

OverlayScrollBar::OverlayScrollBar(const Theme& theme, QAbstractScrollArea& area)
    : QWidget(&area),
      m_theme(theme),
      m_area(area)
{
    area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.installEventFilter(this);
    const QScrollBar* bar = area.verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &OverlayScrollBar::appear);
    connect(bar, &QScrollBar::rangeChanged, this, [this] { place(); });
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
    place();
}

bool OverlayScrollBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        place();
    return QWidget::eventFilter(watched, event);
}

void OverlayScrollBar::place()
{
    setGeometry(m_area.width() - kTarget, 0, kTarget, m_area.height());
    setVisible(m_area.verticalScrollBar()->maximum() > m_area.verticalScrollBar()->minimum());
    raise();
    update();
}

void OverlayScrollBar::appear()
{
    m_isShown = true;
    m_rest.start(kRest, this);
    update();
}

double OverlayScrollBar::travel() const
{
    return height() - 2 * kFromEdge - knob().height();
}

QRectF OverlayScrollBar::knob() const
{
    const QScrollBar& bar = *m_area.verticalScrollBar();
    const double range = bar.maximum() - bar.minimum();
    const double track = height() - 2.0 * kFromEdge;
    const double length = std::max(kShortestKnob, track * bar.pageStep() / (range + bar.pageStep()));
    const double top = range > 0 ? (track - length) * (bar.value() - bar.minimum()) / range : 0;
    const double thickness = m_isHovered ? kWide : kThin;
    return {width() - kFromEdge - thickness, kFromEdge + top, thickness, length};
}

void OverlayScrollBar::paintEvent(QPaintEvent*)
{
    if (!m_isShown && !m_isHovered)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor colour = m_theme.colours().tertiary;
    colour.setAlphaF(kOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    const QRectF shape = knob();
    painter.drawRoundedRect(shape, shape.width() / 2, shape.width() / 2);
}

void OverlayScrollBar::mousePressEvent(QMouseEvent* event)
{
    const QRectF shape = knob();
    const double y = event->position().y();
    m_grip = y >= shape.top() && y <= shape.bottom() ? y - shape.top() : shape.height() / 2;
    mouseMoveEvent(event);
}

void OverlayScrollBar::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton) || travel() <= 0)
        return;
    QScrollBar& bar = *m_area.verticalScrollBar();
    const double share = (event->position().y() - m_grip - kFromEdge) / travel();
    bar.setValue(bar.minimum() + static_cast<int>(share * (bar.maximum() - bar.minimum())));
}

void OverlayScrollBar::enterEvent(QEnterEvent*)
{
    m_isHovered = true;
    update();
}

void OverlayScrollBar::leaveEvent(QEvent*)
{
    m_isHovered = false;
    appear();
}

void OverlayScrollBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_rest.timerId())
        return;
    m_rest.stop();
    m_isShown = false;
    update();
}

} // namespace tessary
