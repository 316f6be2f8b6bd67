#include "ui/kit/WindowAccess.h"

#include <QApplication>
#include <QWidget>

namespace tessary {

WindowAccess::WindowAccess(QWidget& window) : QAccessibleWidget(&window, QAccessible::Window) {}

QWidgetList WindowAccess::menus() const
{
    QWidgetList menus;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* each : windows) {
        const QWidget* owner = each->parentWidget();
        if (each->windowType() == Qt::Popup && each->isVisible() && owner != nullptr &&
            owner->window() == widget())
            menus.append(each);
    }
    return menus;
}

int WindowAccess::childCount() const
{
    return QAccessibleWidget::childCount() + static_cast<int>(menus().size());
}

QAccessibleInterface* WindowAccess::child(int index) const
{
    const int parts = QAccessibleWidget::childCount();
    if (index < parts)
        return QAccessibleWidget::child(index);
    const QWidgetList open = menus();
    return index - parts < open.size() ? QAccessible::queryAccessibleInterface(open.at(index - parts))
                                       : nullptr;
}

int WindowAccess::indexOfChild(const QAccessibleInterface* child) const
{
    const qsizetype menu = child != nullptr ? menus().indexOf(qobject_cast<QWidget*>(child->object())) : -1;
    return menu >= 0 ? QAccessibleWidget::childCount() + static_cast<int>(menu)
                     : QAccessibleWidget::indexOfChild(child);
}

} // namespace tessary
