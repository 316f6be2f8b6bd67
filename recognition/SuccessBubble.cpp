#include "recognition/SuccessBubble.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr SpringCurve kSpring{0.34, 0.82};
constexpr std::chrono::milliseconds kFadeOut{220};
constexpr int kHeight = 40;
constexpr int kLineHeight = 20;
constexpr int kTop = 8;
constexpr int kReach = 8; // around it, for its shadow and the spring's swing
constexpr int kPadding = 16;
constexpr int kSymbolSize = 20;
constexpr int kGap = 8;
constexpr int kShadows = 6;
constexpr int kShadowAlpha = 2; // of 255, of each ring

} // namespace

SuccessBubble::SuccessBubble(const Theme& theme, QWidget* parent) : QWidget(parent), m_theme(theme)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(tr("已成功添加待办事项"));
    setAccessibleRole(*this, QAccessible::AlertMessage);
    connect(&theme, &Theme::changed, this, [this] {
        if (parentWidget() != nullptr)
            place(parentWidget()->width());
        update();
    });
    m_stay.setSingleShot(true);
    m_stay.setTimerType(Qt::PreciseTimer); // a coarse one may be early by five per cent
    m_stay.setInterval(kStay);
    connect(&m_stay, &QTimer::timeout, this, &SuccessBubble::fade);
    connect(&m_spring, &QVariantAnimation::valueChanged, this, [this](const QVariant& seconds) {
        m_way = kSpring.at(seconds.toDouble());
        update();
    });
    m_fading.setStartValue(1.0);
    m_fading.setEndValue(0.0);
    m_fading.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_fading, &QVariantAnimation::valueChanged, this, [this](const QVariant& opacity) {
        m_opacity = opacity.toDouble();
        update();
    });
    connect(&m_fading, &QVariantAnimation::finished, this, &QWidget::hide);
    hide();
}

void SuccessBubble::appear()
{
    m_fading.stop();
    m_opacity = 1;
    show();
    raise();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    m_stay.start();
    const auto length = m_theme.duration(kSpring.settlingTime());
    m_way = length.count() == 0 ? 1 : 0;
    if (length.count() > 0) {
        m_spring.setStartValue(0.0);
        m_spring.setEndValue(std::chrono::duration<double>(length).count());
        m_spring.setDuration(static_cast<int>(length.count()));
        m_spring.start();
    }
    update();
}

void SuccessBubble::fade()
{
    m_stay.stop();
    const auto length = m_theme.duration(kFadeOut);
    if (length.count() == 0)
        return hide();
    m_fading.setDuration(static_cast<int>(length.count()));
    m_fading.start();
}

int SuccessBubble::bodyHeight() const
{
    return m_theme.fitting(kHeight, kLineHeight);
}

void SuccessBubble::place(int width)
{
    setFont(m_theme.font(Theme::kBodySize, QFont::DemiBold));
    const int text = QFontMetrics(font()).horizontalAdvance(accessibleName());
    const int body = 2 * kPadding + kSymbolSize + kGap + text;
    setGeometry((width - body) / 2 - kReach, 0, body + 2 * kReach, kTop + bodyHeight() + 2 * kReach);
}

void SuccessBubble::hideEvent(QHideEvent*)
{
    m_stay.stop();
    m_spring.stop();
    m_fading.stop();
}

void SuccessBubble::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity * std::clamp(m_way, 0.0, 1.0));
    painter.translate(0, (m_way - 1) * (kTop + bodyHeight()));
    const QRect body(kReach, kTop, width() - 2 * kReach, bodyHeight());
    const double radius = body.height() / 2.0;
    painter.setPen(Qt::NoPen);
    for (int ring = kShadows; ring > 0; --ring) {
        painter.setBrush(QColor(0, 0, 0, kShadowAlpha * (kShadows - ring + 1)));
        painter.drawRoundedRect(QRectF(body).adjusted(-ring, 2 - ring, ring, 2 + ring), radius + ring,
                                radius + ring);
    }
    const ThemeColours& colours = m_theme.colours();
    painter.setPen(colours.hairline);
    painter.setBrush(colours.successFill);
    painter.drawRoundedRect(QRectF(body).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.drawPixmap(body.left() + kPadding, body.top() + (body.height() - kSymbolSize) / 2,
                       Symbol(QStringLiteral("checkmark.circle.fill"))
                           .pixmap(kSymbolSize, colours.success, devicePixelRatioF()));
    painter.setPen(colours.success);
    painter.setFont(font());
    const int left = body.left() + kPadding + kSymbolSize + kGap;
    drawSingleLine(painter, QRect(left, body.top(), body.right() - left, body.height()), accessibleName());
}

} // namespace tessary
