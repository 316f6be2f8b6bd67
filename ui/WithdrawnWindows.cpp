#include "ui/WithdrawnWindows.h"

#include <QWidget>

#include <utility>

namespace tessary {

bool WithdrawnWindows::withdraw(QWidget& window)
{
    if (!window.isVisible() || window.isMinimized())
        return false;
    m_windows.append(&window);
    window.hide();
    return true;
}

void WithdrawnWindows::restore()
{
    for (const QPointer<QWidget>& window : std::exchange(m_windows, {})) {
        if (!window || window->isVisible())
            continue;
        const bool wasActivating = !window->testAttribute(Qt::WA_ShowWithoutActivating);
        window->setAttribute(Qt::WA_ShowWithoutActivating);
        window->move(window->pos()); // window managers place those anew that name no position
        window->show();
        window->setAttribute(Qt::WA_ShowWithoutActivating, !wasActivating);
    }
}

} // namespace tessary
