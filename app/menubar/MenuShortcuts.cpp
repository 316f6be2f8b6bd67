#include "app/menubar/MenuShortcuts.h"

#include <QKeyEvent>
#include <QMenu>

namespace tessary {

MenuShortcuts::MenuShortcuts(QMenu& menu) : QObject(&menu), m_menu(menu)
{
    menu.installEventFilter(this);
}

bool MenuShortcuts::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const QKeySequence pressed(static_cast<QKeyEvent*>(event)->keyCombination());
    for (QAction* action : m_menu.actions()) {
        if (action->isEnabled() && action->isVisible() && action->shortcuts().contains(pressed)) {
            m_menu.close();
            action->trigger();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tessary
