#include "ui/quicksearch/ResultList.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/QuickSearchResultRow.h"
#include "ui/quicksearch/ResultListAccess.h"
#include "ui/quicksearch/ResultListModel.h"
#include "ui/quicksearch/ResultRowDelegate.h"
#include "ui/quicksearch/TileImages.h"

#include <QContextMenuEvent>
#include <QResizeEvent>
#include <QScrollBar>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kPadding = 8;
constexpr int kWidth = 320;
constexpr int kWidest = 380;

} // namespace

ResultList::ResultList(const Theme& theme, ResultListModel& model, TileImages& tiles, QWidget* parent)
    : QListView(parent),
      m_theme(theme),
      m_rows(model),
      m_delegate(new ResultRowDelegate(theme, model, tiles, this))
{
    ResultListAccess::install();
    renewAccess(*this);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(kPadding, 0, kPadding, 0);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setTabKeyNavigation(false);
    setAccessibleName(tr("搜索结果"));
    setItemDelegate(m_delegate);
    setModel(&model);
    new OverlayScrollBar(theme, *this);
    connect(&tiles, &TileImages::arrived, viewport(), qOverload<>(&QWidget::update));
    for (RowFade* fade : {&m_delegate->selection(), &m_delegate->hover()})
        connect(fade, &RowFade::changed, this, qOverload<const QModelIndex&>(&QAbstractItemView::update));
    connect(&theme, &Theme::changed, this, &ResultList::applyTheme);
    applyTheme();
}

int ResultList::widthFor(const Theme& theme)
{
    return std::clamp(theme.scaled(kWidth), kWidth, kWidest);
}

void ResultList::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, m_theme.colours().surface);
    palette.setColor(QPalette::Window, m_theme.colours().surface);
    setPalette(palette);
    setAutoFillBackground(true);
    verticalScrollBar()->setSingleStep(QuickSearchResultRow::height(m_theme) / 2);
    scheduleDelayedItemsLayout();
    viewport()->update();
}

void ResultList::setKeywords(const QStringList& keywords)
{
    m_delegate->setKeywords(keywords);
    viewport()->update();
}

void ResultList::select(int row)
{
    const QModelIndex index = m_rows.record(row) != nullptr ? m_rows.index(row) : QModelIndex();
    // Keys that repeat, or are pressed as fast, are not followed by a tail of fading rows.
    const bool isFast = m_sinceSelected.isValid() && m_sinceSelected.elapsed() < Theme::kFade.count();
    m_delegate->selection().moveTo(index, isFast ? RowFade::Way::Jump : RowFade::Way::Fade);
    const bool isNew = !index.isValid() || currentIndex() != index || !selectionModel()->isSelected(index);
    if (!isNew)
        return;
    m_sinceSelected.start();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (!index.isValid())
        selectionModel()->clear();
    else if (std::exchange(m_selected, row) != row)
        scrollTo(index, EnsureVisible);
}

/// Only `select` selects.
QItemSelectionModel::SelectionFlags ResultList::selectionCommand(const QModelIndex&, const QEvent*) const
{
    return QItemSelectionModel::NoUpdate;
}

/// A banner takes room away: the selected row stays in view.
void ResultList::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    if (currentIndex().isValid() && event->size().height() < event->oldSize().height())
        scrollTo(currentIndex(), EnsureVisible);
}

bool ResultList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
        m_delegate->hover().moveTo(indexAt(static_cast<QHoverEvent*>(event)->position().toPoint()),
                                   RowFade::Way::Fade);
    else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::Leave)
        m_delegate->hover().moveTo({}, RowFade::Way::Fade);
    return QListView::viewportEvent(event);
}

void ResultList::keyPressEvent(QKeyEvent* event)
{
    event->ignore(); // the panel knows what keys mean
}

void ResultList::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || event->button() != Qt::LeftButton)
        return;
    if (m_rows.record(index.row()) == nullptr)
        Q_EMIT loadMoreRequested();
    else
        Q_EMIT rowClicked(index.row());
}

void ResultList::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton)
        QListView::mouseMoveEvent(event);
}

void ResultList::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && m_rows.record(index.row()) != nullptr)
        Q_EMIT rowActivated(index.row());
}

bool ResultList::isItem(int row) const
{
    return m_rows.record(row) != nullptr;
}

void ResultList::activate(int row)
{
    if (!isItem(row)) {
        Q_EMIT loadMoreRequested();
        return;
    }
    Q_EMIT rowClicked(row);
    Q_EMIT rowActivated(row);
}

QPoint ResultList::placeOfMenu(int row) const
{
    return viewport()->mapToGlobal(visualRect(m_rows.index(row)).center());
}

void ResultList::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Mouse)
        return event->ignore(); // the view knows what is selected
    const QModelIndex index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (m_rows.record(index.row()) != nullptr)
        Q_EMIT rowMenuRequested(index.row(), event->globalPos());
}

} // namespace tessary
