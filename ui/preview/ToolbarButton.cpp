#include "ui/preview/ToolbarButton.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kSmallestWidth = 64;
constexpr int kPadding = 8;
constexpr int kSymbolSize = 20;
constexpr int kSymbolTop = 6;
constexpr int kLabelTop = 30;
constexpr int kLabelHeight = 16;
constexpr int kBottom = 6;
constexpr int kWithoutLabel = 36;

} // namespace

ToolbarButton::ToolbarButton(const Theme& theme, const QString& symbol, const QString& text, Role role,
                             QWidget* parent)
    : QAbstractButton(parent),
      m_theme(theme),
      m_symbol(symbol),
      m_role(role),
      m_hover(theme, *this)
{
    setText(text);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void ToolbarButton::setOn(bool isOn, const QString& onSymbol, const QString& text)
{
    m_isOn = isOn;
    m_onSymbol = onSymbol;
    setText(text);
    setToolTip(m_showsLabel ? QString() : text);
    updateGeometry();
    update();
}

void ToolbarButton::setShowsLabel(bool shows)
{
    m_showsLabel = shows;
    setToolTip(shows ? QString() : text());
    updateGeometry();
    update();
}

QSize ToolbarButton::sizeWithLabel() const
{
    const int label = QFontMetrics(m_theme.font(Theme::kCaptionSize)).horizontalAdvance(text());
    return {std::max(kSmallestWidth, label + 2 * kPadding),
            kLabelTop + m_theme.scaled(kLabelHeight) + kBottom};
}

QSize ToolbarButton::sizeHint() const
{
    return m_showsLabel ? sizeWithLabel() : QSize(kWithoutLabel, kWithoutLabel);
}

QColor ToolbarButton::symbolColour() const
{
    const ThemeColours& colours = m_theme.colours();
    if (!isEnabled())
        return colours.tertiary;
    if (m_role == Role::Destructive)
        return colours.danger;
    if (m_isOn)
        return colours.accentText;
    return m_hover.value() > 0.5 ? colours.text : colours.secondaryText;
}

QColor ToolbarButton::textColour() const
{
    const ThemeColours& colours = m_theme.colours();
    if (!isEnabled())
        return colours.tertiary;
    return m_role == Role::Destructive ? colours.danger : colours.text;
}

void ToolbarButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor face = isDown() ? m_theme.colours().pressed : m_theme.colours().raised;
    if (!isDown())
        face.setAlphaF(static_cast<float>(isEnabled() ? m_hover.value() : 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(face);
    painter.drawRoundedRect(rect(), Theme::kRowRadius, Theme::kRowRadius);
    const int top = m_showsLabel ? kSymbolTop : (height() - kSymbolSize) / 2;
    const QString& symbol = m_isOn && !m_onSymbol.isEmpty() ? m_onSymbol : m_symbol;
    painter.drawPixmap((width() - kSymbolSize) / 2, top,
                       Symbol(symbol).pixmap(kSymbolSize, symbolColour(), devicePixelRatioF()));
    if (m_showsLabel) {
        painter.setPen(textColour());
        painter.setFont(m_theme.font(Theme::kCaptionSize));
        drawSingleLine(painter, QRect(0, kLabelTop, width(), m_theme.scaled(kLabelHeight)), text(),
                       Qt::AlignHCenter);
    }
    m_focusRing.paint(painter, m_theme, rect(), Theme::kRowRadius);
}

} // namespace tessary
