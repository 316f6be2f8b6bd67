#include "ui/kit/MenuStyle.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QMenu>
#include <QPainter>

namespace tessary {
namespace {

constexpr int kPadding = 6;
constexpr int kRowHeight = 24;
constexpr int kLineHeight = 18;
constexpr int kHeadingHeight = 24;
constexpr int kRowRadius = 5;
constexpr int kSeparatorHeight = 11;
constexpr int kLeft = 6;
constexpr int kRight = 8;
constexpr int kTick = 12;
constexpr int kSymbol = 16;
constexpr int kGap = 8;
constexpr int kShortcutGap = 24;
constexpr int kNarrowest = 196;

/// Where symbols start; ticks have a column of their own where there are any.
int contentStart(const QStyleOptionMenuItem& item, const Theme& theme)
{
    return item.menuHasCheckableItems ? kLeft + theme.scaled(kTick) + kGap : kLeft;
}

int symbolColumn(const QStyleOptionMenuItem& item, const Theme& theme)
{
    return item.icon.isNull() ? 0 : theme.scaled(kSymbol) + kGap;
}

bool isHeading(const QStyleOptionMenuItem& item)
{
    return item.menuItemType == QStyleOptionMenuItem::Separator && !item.text.isEmpty();
}

QString label(const QStyleOptionMenuItem& item)
{
    return item.text.section(QLatin1Char('\t'), 0, 0);
}

QString keys(const QStyleOptionMenuItem& item)
{
    return item.text.section(QLatin1Char('\t'), 1);
}

} // namespace

MenuStyle::MenuStyle(const Theme& theme) : QProxyStyle(QStringLiteral("fusion")), m_theme(theme) {}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_MenuPanelWidth:
    case PM_MenuDesktopFrameWidth:
        return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return kPadding;
    case PM_SmallIconSize:
        return m_theme.scaled(kSymbol);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const
{
    if (hint == SH_Menu_SupportsSections || hint == SH_Menu_MouseTracking || hint == SH_Menu_Scrollable)
        return 1;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const
{
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuItem || item == nullptr)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (isHeading(*item))
        return {kNarrowest, m_theme.fitting(kHeadingHeight, kLineHeight)};
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {kNarrowest, kSeparatorHeight};
    const QFontMetrics metrics(item->font);
    int width = contentStart(*item, m_theme) + symbolColumn(*item, m_theme) +
                metrics.horizontalAdvance(label(*item)) + kRight;
    if (!keys(*item).isEmpty())
        width += kShortcutGap + metrics.horizontalAdvance(keys(*item));
    return {qMax(kNarrowest, width), m_theme.fitting(kRowHeight, kLineHeight)};
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr) {
        painter->save();
        drawItem(*item, *painter, widget != nullptr ? widget->devicePixelRatioF() : 1);
        painter->restore();
        return;
    }
    if (element == CE_MenuEmptyArea || element == CE_MenuHMargin || element == CE_MenuVMargin)
        return;
    QProxyStyle::drawControl(element, option, painter, widget);
}

void MenuStyle::drawItem(const QStyleOptionMenuItem& item, QPainter& painter, qreal devicePixelRatio) const
{
    const ThemeColours& colours = m_theme.colours();
    const QRect row = item.rect;
    painter.setRenderHint(QPainter::Antialiasing);
    if (isHeading(item)) {
        painter.setFont(m_theme.font(Theme::kCaptionSize));
        painter.setPen(colours.secondaryText);
        drawSingleLine(painter, row.adjusted(contentStart(item, m_theme), 0, -kRight, 0), item.text);
        return;
    }
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(row.left() + kRight, row.center().y(), row.width() - 2 * kRight, 1,
                         colours.hairline);
        return;
    }
    const bool isEnabled = item.state.testFlag(State_Enabled);
    const bool isChosen = item.state.testFlag(State_Selected) && isEnabled;
    if (isChosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours.accent);
        painter.drawRoundedRect(row, kRowRadius, kRowRadius);
    }
    const QColor text = isChosen ? colours.onAccent : (isEnabled ? colours.text : colours.secondaryText);
    const QColor quiet = isChosen ? colours.onAccent : colours.secondaryText;
    const auto drawSymbol = [&](const QString& name, int size, int left, const QColor& colour) {
        painter.drawPixmap(row.left() + left, row.top() + (row.height() - size) / 2,
                           Symbol(name).pixmap(size, colour, devicePixelRatio));
    };
    if (item.checked)
        drawSymbol(QStringLiteral("checkmark"), m_theme.scaled(kTick), kLeft, text);
    if (!item.icon.isNull()) // its name says which symbol
        drawSymbol(item.icon.name(), m_theme.scaled(kSymbol), contentStart(item, m_theme), quiet);
    const int left = contentStart(item, m_theme) + symbolColumn(item, m_theme);
    painter.setFont(item.font);
    painter.setPen(text);
    drawSingleLine(painter, row.adjusted(left, 0, -kRight, 0), label(item));
    painter.setPen(quiet);
    drawSingleLine(painter, row.adjusted(left, 0, -kRight, 0), keys(item), Qt::AlignRight);
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (element == PE_FrameMenu)
        return;
    if (element == PE_PanelMenu)
        return; // Menu paints its own body
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace tessary
