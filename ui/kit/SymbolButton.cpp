#include "ui/kit/SymbolButton.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/BlendedColour.h"
#include "ui/kit/MenuButtonAccess.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kPadding = 8;
constexpr int kGap = 4;
constexpr int kTrailingSize = 12;

} // namespace

SymbolButton::SymbolButton(const Theme& theme, QString symbol, QWidget* parent)
    : QAbstractButton(parent),
      m_theme(theme),
      m_symbol(std::move(symbol)),
      m_hover(theme, *this)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void SymbolButton::setCheckedSymbol(const QString& symbol)
{
    m_checkedSymbol = symbol;
}

void SymbolButton::setTrailingSymbol(const QString& symbol)
{
    m_trailingSymbol = symbol;
    updateGeometry();
}

void SymbolButton::setSymbolSize(int pixels)
{
    m_symbolSize = pixels;
    updateGeometry();
}

void SymbolButton::setExtent(int pixels)
{
    m_extent = pixels;
    updateGeometry();
}

void SymbolButton::setShowsText(bool shows)
{
    m_showsText = shows;
    updateGeometry();
}

void SymbolButton::setTinted(bool isTinted)
{
    m_isTinted = isTinted;
    update();
}

void SymbolButton::setOpensMenu()
{
    m_opensMenu = true;
    MenuButtonAccess::install();
    renewAccess(*this);
}

void SymbolButton::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

void SymbolButton::setRestingColour(const QColor& colour)
{
    m_restingColour = colour;
    update();
}

QSize SymbolButton::sizeHint() const
{
    const int extent = m_theme.fitting(m_extent, m_symbolSize);
    if (!m_showsText)
        return {extent, extent};
    int width =
        kPadding + symbolSize() + kGap + QFontMetrics(textFont()).horizontalAdvance(text()) + kPadding;
    if (!m_trailingSymbol.isEmpty())
        width += kGap + m_theme.scaled(kTrailingSize);
    return {width, extent};
}

QFont SymbolButton::textFont() const
{
    return m_theme.font(Theme::kBodySize);
}

QColor SymbolButton::background() const
{
    const ThemeColours& colours = m_theme.colours();
    if (m_isHeld || isDown())
        return colours.pressed;
    if (isOn())
        return blended(colours.accentTint, colours.accentTintHover, m_hover.value());
    return blended(transparent(colours.raised), colours.raised, m_hover.value());
}

QColor SymbolButton::foreground() const
{
    const ThemeColours& colours = m_theme.colours();
    if (!isEnabled())
        return colours.tertiary;
    if (isOn() && !m_isHeld)
        return colours.accentText;
    if (m_isHeld || isDown())
        return m_restingColour.isValid() ? m_restingColour : colours.text;
    if (m_restingColour.isValid())
        return m_restingColour;
    return blended(colours.secondaryText, colours.text, m_hover.value());
}

int SymbolButton::symbolSize() const
{
    return m_theme.scaled(m_symbolSize);
}

void SymbolButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background());
    const double radius = m_extent < 20 ? Theme::kCapRadius : Theme::kControlRadius;
    painter.drawRoundedRect(rect(), radius, radius);
    const QColor colour = foreground();
    const QString symbol = isChecked() && !m_checkedSymbol.isEmpty() ? m_checkedSymbol : m_symbol;
    const int size = symbolSize();
    const int left = m_showsText ? kPadding : (width() - size) / 2;
    painter.drawPixmap(left, (height() - size) / 2, Symbol(symbol).pixmap(size, colour, devicePixelRatioF()));
    if (m_showsText) {
        painter.setPen(colour);
        painter.setFont(textFont());
        const int textLeft = kPadding + size + kGap;
        drawSingleLine(painter, QRect(textLeft, 0, width() - textLeft, height()), text());
        const int trailing = m_theme.scaled(kTrailingSize);
        if (!m_trailingSymbol.isEmpty())
            painter.drawPixmap(width() - kPadding - trailing, (height() - trailing) / 2,
                               Symbol(m_trailingSymbol).pixmap(trailing, colour, devicePixelRatioF()));
    }
    m_focusRing.paint(painter, m_theme, rect(), radius);
}

} // namespace tessary
