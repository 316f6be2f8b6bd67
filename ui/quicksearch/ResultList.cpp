#include "ui/quicksearch/ResultList.h"

#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/QuickSearchResultRow.h"
#include "ui/quicksearch/ResultListModel.h"
#include "ui/quicksearch/ResultRowDelegate.h"
#include "ui/quicksearch/TileImages.h"

#include <QContextMenuEvent>
#include <QResizeEvent>
#include <QScrollBar>

namespace tessary {
namespace {

constexpr int kPadding = 8;

} // namespace

ResultList::ResultList(const Theme& theme, ResultListModel& model, TileImages& tiles, QWidget* parent)
    : QListView(parent),
      m_theme(theme),
      m_rows(model),
      m_delegate(new ResultRowDelegate(theme, model, tiles, this))
{
    setFixedWidth(kWidth);
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
    verticalScrollBar()->setSingleStep(QuickSearchResultRow::kHeight / 2);
    new OverlayScrollBar(theme, *this);
    connect(&tiles, &TileImages::arrived, viewport(), qOverload<>(&QWidget::update));
    connect(&theme, &Theme::changed, this, &ResultList::applyTheme);
    applyTheme();
}

void ResultList::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, m_theme.colours().surface);
    palette.setColor(QPalette::Window, m_theme.colours().surface);
    setPalette(palette);
    setAutoFillBackground(true);
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
    const bool isNew = !index.isValid() || currentIndex() != index || !selectionModel()->isSelected(index);
    if (!isNew)
        return;
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
