#include "ui/kit/PushButton.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kRing = 3; // around the face, for the focus ring
constexpr int kHeight = 28;
constexpr int kPadding = 12;
constexpr int kSymbolSize = 16;
constexpr int kGap = 6;
constexpr int kHoverDarker = 112; // percent
constexpr int kPressedDarker = 128;

} // namespace

PushButton::PushButton(const Theme& theme, Role role, QWidget* parent)
    : QAbstractButton(parent),
      m_theme(theme),
      m_role(role),
      m_hover(theme, *this)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void PushButton::setSymbol(const QString& symbol)
{
    m_symbol = symbol;
    updateGeometry();
}

QSize PushButton::sizeHint() const
{
    int width = 2 * (kRing + kPadding) + QFontMetrics(textFont()).horizontalAdvance(text());
    if (!m_symbol.isEmpty())
        width += m_theme.scaled(kSymbolSize) + kGap;
    return {width, m_theme.fitting(kHeight, kSymbolSize) + 2 * kRing};
}

QFont PushButton::textFont() const
{
    return m_theme.font(Theme::kBodySize, m_role == Role::Default ? QFont::Medium : QFont::Normal);
}

QColor PushButton::face() const
{
    const ThemeColours& colours = m_theme.colours();
    if (isFilled()) {
        if (isDown())
            return colours.accent.darker(kPressedDarker);
        return m_hover.value() > 0.5 ? colours.accent.darker(kHoverDarker) : colours.accent;
    }
    if (!isEnabled())
        return m_theme.isDark() ? colours.surface : colours.raised;
    if (isDown())
        return m_theme.isDark() ? colours.surface : colours.pressed;
    const QColor rest = m_theme.isDark() ? colours.raised : colours.surface;
    if (m_hover.value() > 0.5)
        return m_theme.isDark() ? rest.lighter(kHoverDarker) : colours.raised;
    return rest;
}

QColor PushButton::foreground() const
{
    if (!isEnabled())
        return m_theme.colours().tertiary;
    if (m_role == Role::Destructive)
        return m_theme.colours().danger;
    return isFilled() ? m_theme.colours().onAccent : m_theme.colours().text;
}

void PushButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect area = rect().adjusted(kRing, kRing, -kRing, -kRing);
    const bool edged = isEnabled() && !isFilled();
    painter.setPen(edged ? QPen(m_theme.colours().edge) : QPen(Qt::NoPen));
    painter.setBrush(face());
    const double inset = edged ? 0.5 : 0;
    painter.drawRoundedRect(QRectF(area).adjusted(inset, inset, -inset, -inset), Theme::kControlRadius,
                            Theme::kControlRadius);
    int left = area.left() + kPadding;
    if (!m_symbol.isEmpty()) {
        const int size = m_theme.scaled(kSymbolSize);
        painter.drawPixmap(left, area.top() + (area.height() - size) / 2,
                           Symbol(m_symbol).pixmap(size, foreground(), devicePixelRatioF()));
        left += size + kGap;
    }
    painter.setPen(foreground());
    painter.setFont(textFont());
    drawSingleLine(painter, QRect(left, area.top(), area.right() - left, area.height()), text());
    m_focusRing.paint(painter, m_theme, rect(), Theme::kControlRadius + kRing);
}

} // namespace tessary
