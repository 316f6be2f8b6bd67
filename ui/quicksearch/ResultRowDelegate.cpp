#include "ui/quicksearch/ResultRowDelegate.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/QuickSearchResultRow.h"
#include "ui/quicksearch/ResultListModel.h"

#include <QPainter>
#include <QStyleOptionViewItem>

namespace tessary {
namespace {

/// Above the first row, and part of it so that it scrolls away with it.
constexpr int kAboveFirst = 8;

} // namespace

ResultRowDelegate::ResultRowDelegate(const Theme& theme, const ResultListModel& model, TileImages& tiles,
                                     QObject* parent)
    : QAbstractItemDelegate(parent),
      m_theme(theme),
      m_model(model),
      m_tiles(tiles),
      m_selection(theme),
      m_hover(theme)
{
    connect(&theme, &Theme::changed, this, [this] { m_titles.clear(); });
}

void ResultRowDelegate::setKeywords(const QStringList& keywords)
{
    if (m_keywords == keywords)
        return;
    m_keywords = keywords;
    m_titles.clear();
}

const ShownTitle& ResultRowDelegate::titleOf(const ScreenshotRecord& record, int rowWidth) const
{
    constexpr qsizetype kMostKept = 400;
    const int width = QuickSearchResultRow::titleWidth(record, rowWidth, m_theme);
    const auto found = m_titles.constFind(record.id);
    if (found != m_titles.cend() && found->width == width && found->source == record.filename)
        return found->shown;
    if (m_titles.size() >= kMostKept)
        m_titles.clear();
    const QFont font = m_theme.font(Theme::kBodySize);
    const QFont emphasised = m_theme.font(Theme::kBodySize, QFont::DemiBold);
    KeptTitle kept{record.filename, width, shownTitle(record, m_keywords, font, emphasised, width)};
    return m_titles.insert(record.id, kept)->shown;
}

void ResultRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const ScreenshotRecord* record = m_model.record(index.row());
    if (record == nullptr)
        return paintLoadMore(*painter, option);
    QuickSearchResultRow::State state;
    state.selected = m_selection.of(index);
    state.hovered = m_hover.of(index);
    state.hasRing = option.state.testFlag(QStyle::State_HasFocus);
    QuickSearchResultRow(*record, state)
        .paint(*painter, option.rect.adjusted(0, index.row() == 0 ? kAboveFirst : 0, 0, 0), m_theme, m_tiles,
               titleOf(*record, option.rect.width()), m_model.now());
}

void ResultRowDelegate::paintLoadMore(QPainter& painter, const QStyleOptionViewItem& option) const
{
    constexpr int kHeight = 28;
    constexpr int kLineHeight = 16;
    constexpr int kPadding = 12;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const ThemeColours& colours = m_theme.colours();
    const QFont font = m_theme.font(Theme::kBodySize);
    const int width = QFontMetrics(font).horizontalAdvance(ResultListModel::loadMoreText()) + 2 * kPadding;
    QRectF button(0, 0, width, m_theme.fitting(kHeight, kLineHeight));
    button.moveCenter(QRectF(option.rect).center());
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver) && !m_isLoadingMore;
    painter.setPen(colours.edge);
    painter.setBrush(isHovered || m_theme.isDark() ? colours.raised : colours.surface);
    painter.drawRoundedRect(button.toRect().adjusted(0, 0, -1, -1), Theme::kControlRadius,
                            Theme::kControlRadius);
    painter.setFont(font);
    painter.setPen(m_isLoadingMore ? colours.tertiary : colours.text);
    drawSingleLine(painter, button.toRect(), ResultListModel::loadMoreText(), Qt::AlignHCenter);
    painter.restore();
}

QSize ResultRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {option.rect.width(),
            QuickSearchResultRow::height(m_theme) + (index.row() == 0 ? kAboveFirst : 0)};
}

} // namespace tessary
