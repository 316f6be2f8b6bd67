#include "ui/quicksearch/ResultListAccess.h"

#include "ui/quicksearch/ResultList.h"
#include "ui/quicksearch/ResultRowAccess.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr qsizetype kFewRows = 64;

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    auto* list = qobject_cast<ResultList*>(object);
    return list != nullptr ? new ResultListAccess(*list) : nullptr; // Qt's to delete
}

} // namespace

ResultListAccess::ResultListAccess(ResultList& list) : QAccessibleWidget(&list, QAccessible::List) {}

ResultListAccess::~ResultListAccess()
{
    for (const QAccessible::Id id : std::as_const(m_rows))
        QAccessible::deleteAccessibleInterface(id);
}

void ResultListAccess::install()
{
    QAccessible::installFactory(interfaceFor);
}

ResultList& ResultListAccess::list() const
{
    return static_cast<ResultList&>(*widget());
}

int ResultListAccess::childCount() const
{
    return list().model()->rowCount();
}

QAccessibleInterface* ResultListAccess::child(int row) const
{
    const QPersistentModelIndex index = list().model()->index(row, 0);
    if (!index.isValid())
        return nullptr;
    if (const auto found = m_rows.constFind(index); found != m_rows.cend())
        return QAccessible::accessibleInterface(*found);
    if (m_rows.size() >= m_tidyAt)
        forgetGone();
    auto* made = new ResultRowAccess(list(), index);
    m_rows.insert(index, QAccessible::registerAccessibleInterface(made)); // which owns it from now on
    return made;
}

void ResultListAccess::forgetGone() const
{
    for (auto row = m_rows.begin(); row != m_rows.end();) {
        if (row.key().isValid()) {
            ++row;
            continue;
        }
        QAccessible::deleteAccessibleInterface(*row);
        row = m_rows.erase(row);
    }
    m_tidyAt = std::max(kFewRows, 2 * m_rows.size());
}

QAccessibleInterface* ResultListAccess::childAt(int x, int y) const
{
    const QModelIndex index = list().indexAt(list().viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? child(index.row()) : nullptr;
}

QAccessibleInterface* ResultListAccess::focusChild() const
{
    const QModelIndex current = list().currentIndex();
    return list().hasFocus() && current.isValid() ? child(current.row()) : nullptr;
}

int ResultListAccess::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* row = dynamic_cast<const ResultRowAccess*>(child);
    return row != nullptr ? row->row() : -1;
}

} // namespace tessary
