#include "app/menubar/MenuBarContent.h"

#include "app/AppRuntime.h"
#include "app/menubar/MenuShortcuts.h"

namespace tessary {

MenuBarContent::MenuBarContent(AppRuntime& runtime, const Theme& theme)
    : m_runtime(runtime),
      m_menu(theme, false)
{
    QAction* open = m_menu.addAction(tr("打开 Tessary"));
    connect(open, &QAction::triggered, &m_runtime, &AppRuntime::toggleQuickSearch);

    m_warning = m_menu.addAction(tr("打开 Tessary 的全局快捷键不可用"));
    m_warning->setEnabled(false); // text, not something to choose
    m_menu.addSeparator();

    QAction* settings = m_menu.addAction(tr("设置…"));
    settings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    settings->setMenuRole(QAction::NoRole);
    connect(settings, &QAction::triggered, &m_runtime, &AppRuntime::openSettings);

    QAction* quit = m_menu.addAction(tr("退出 Tessary"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::NoRole);
    connect(quit, &QAction::triggered, this, &MenuBarContent::quitRequested);

    for (QAction* action : m_menu.actions())
        action->setShortcutVisibleInContextMenu(true);
    m_menu.setAccessibleName(QStringLiteral("Tessary"));
    new MenuShortcuts(m_menu);
    connect(&m_runtime, &AppRuntime::hotKeysChanged, this, &MenuBarContent::update);
    update();
}

void MenuBarContent::update()
{
    m_warning->setVisible(!m_runtime.hotKeyAvailable());
}

} // namespace tessary
