#include "ui/quicksearch/ResultRowAccess.h"

#include "ui/quicksearch/ResultList.h"

#include <QTimer>

namespace tessary {

ResultRowAccess::ResultRowAccess(ResultList& list, const QPersistentModelIndex& index)
    : m_list(&list),
      m_index(index)
{
}

bool ResultRowAccess::isValid() const
{
    return m_list != nullptr && m_index.isValid();
}

bool ResultRowAccess::isItem() const
{
    return isValid() && m_list->isItem(m_index.row());
}

QAccessibleInterface* ResultRowAccess::parent() const
{
    return QAccessible::queryAccessibleInterface(m_list);
}

QString ResultRowAccess::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name && isValid() ? m_index.data(Qt::AccessibleTextRole).toString()
                                                  : QString();
}

QRect ResultRowAccess::rect() const
{
    if (!isValid())
        return {};
    const QRect place = m_list->visualRect(m_index);
    return {m_list->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::Role ResultRowAccess::role() const
{
    return isItem() ? QAccessible::ListItem : QAccessible::Button;
}

QAccessible::State ResultRowAccess::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    if (!isValid())
        return state;
    const bool isSeen = m_list->viewport()->rect().intersects(m_list->visualRect(m_index));
    state.offscreen = !isSeen;
    state.invisible = !m_list->isVisible();
    state.focusable = true;
    state.selectable = isItem();
    state.selected = m_list->selectionModel()->isSelected(m_index);
    state.focused = m_list->hasFocus() && m_list->currentIndex() == m_index;
    return state;
}

void* ResultRowAccess::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList ResultRowAccess::actionNames() const
{
    if (isItem())
        return {pressAction(), setFocusAction(), showMenuAction()};
    return {pressAction()};
}

/// Later, since whoever asks waits for an answer, and the row may be gone when it has been done. As with the
/// mouse: to choose a row is one thing, to use it another.
void ResultRowAccess::doAction(const QString& name)
{
    if (!isValid())
        return;
    ResultList* list = m_list;
    QTimer::singleShot(0, list, [list, name, index = m_index] {
        if (!index.isValid())
            return;
        if (name == pressAction())
            list->activate(index.row());
        else if (name == setFocusAction())
            Q_EMIT list->rowClicked(index.row());
        else if (name == showMenuAction())
            Q_EMIT list->rowMenuRequested(index.row(), list->placeOfMenu(index.row()));
    });
}

} // namespace tessary
