#include "ui/kit/MenuButtonAccess.h"

#include "ui/kit/SymbolButton.h"

#include <QTimer>

namespace tessary {
namespace {

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    auto* button = qobject_cast<SymbolButton*>(object);
    const bool isMenu = button != nullptr && button->opensMenu();
    return isMenu ? new MenuButtonAccess(*button) : nullptr; // Qt's to delete
}

} // namespace

MenuButtonAccess::MenuButtonAccess(SymbolButton& button) : QAccessibleWidget(&button, QAccessible::ButtonMenu)
{
}

void MenuButtonAccess::install()
{
    QAccessible::installFactory(interfaceFor);
}

SymbolButton& MenuButtonAccess::button() const
{
    return static_cast<SymbolButton&>(*widget());
}

QString MenuButtonAccess::text(QAccessible::Text kind) const
{
    const QString text = QAccessibleWidget::text(kind);
    return text.isEmpty() && kind == QAccessible::Name ? button().text() : text;
}

QAccessible::State MenuButtonAccess::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = button().isHeld();
    state.collapsed = !button().isHeld();
    return state;
}

QStringList MenuButtonAccess::actionNames() const
{
    return QStringList{pressAction(), showMenuAction()} + QAccessibleWidget::actionNames();
}

/// Later, since whoever asks waits for an answer and opening takes a while.
void MenuButtonAccess::doAction(const QString& name)
{
    if (name == pressAction() || name == showMenuAction())
        QTimer::singleShot(0, &button(), &QAbstractButton::click);
    else
        QAccessibleWidget::doAction(name);
}

} // namespace tessary
