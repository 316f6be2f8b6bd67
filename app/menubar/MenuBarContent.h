#pragma once

#include "ui/kit/Menu.h"

namespace tessary {

class AppRuntime;

/// The menu of the icon in the panel; it follows the runtime. Main thread only.
class MenuBarContent : public QObject {
    Q_OBJECT
public:
    /// @param runtime outlives this, as does the theme.
    MenuBarContent(AppRuntime& runtime, const Theme& theme);

    [[nodiscard]] QMenu& menu() { return m_menu; }

Q_SIGNALS:
    void quitRequested();

private:
    void update();

    AppRuntime& m_runtime;
    Menu m_menu;
    QAction* m_warning = nullptr;
};

} // namespace tessary
