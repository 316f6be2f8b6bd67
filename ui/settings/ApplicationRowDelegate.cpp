#include "ui/settings/ApplicationRowDelegate.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kHeight = 36;
constexpr int kPadding = 8;
constexpr int kIcon = 20;
constexpr int kGap = 8;

} // namespace

ApplicationRowDelegate::ApplicationRowDelegate(const Theme& theme, QObject* parent)
    : QStyledItemDelegate(parent),
      m_theme(theme)
{
}

QSize ApplicationRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {0, m_theme.scaled(kHeight)};
}

void ApplicationRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ThemeColours& colours = m_theme.colours();
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    if (isSelected || option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(isSelected ? colours.accent : colours.raised);
        painter->drawRoundedRect(option.rect, Theme::kControlRadius, Theme::kControlRadius);
    }
    QRect area = option.rect.adjusted(kPadding, 0, -kPadding, 0);
    const QRect iconArea(area.left(), area.top() + (area.height() - kIcon) / 2, kIcon, kIcon);
    const QImage icon = index.data(Qt::DecorationRole).value<QImage>();
    if (icon.isNull())
        painter->drawPixmap(iconArea.topLeft(),
                            Symbol(QStringLiteral("app.dashed"))
                                .pixmap(kIcon, isSelected ? colours.secondaryOnAccent : colours.tertiary,
                                        painter->device()->devicePixelRatioF()));
    else
        painter->drawImage(iconArea, icon);
    area.setLeft(iconArea.right() + 1 + kGap);
    const QString name = index.data(Qt::DisplayRole).toString();
    const QString identifier = index.data(Qt::ToolTipRole).toString();
    const QFontMetrics nameMetrics(m_theme.font(Theme::kBodySize));
    const int nameWidth = std::min(nameMetrics.horizontalAdvance(name), area.width());
    painter->setFont(m_theme.font(Theme::kBodySize));
    painter->setPen(isSelected ? colours.onAccent : colours.text);
    drawSingleLine(*painter, area, nameMetrics.elidedText(name, Qt::ElideRight, area.width()));
    area.setLeft(area.left() + nameWidth + kGap);
    painter->setFont(m_theme.font(Theme::kCaptionSize));
    painter->setPen(isSelected ? colours.secondaryOnAccent : colours.secondaryText);
    const QString shown = painter->fontMetrics().elidedText(identifier, Qt::ElideMiddle, area.width());
    drawSingleLine(*painter, area, shown, Qt::AlignRight);
    painter->restore();
}

} // namespace tessary
