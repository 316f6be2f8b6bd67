#include "ui/OrdinaryWindows.h"

#include "app/AppSettings.h"
#include "platform/WindowEffects.h"

#include <QEvent>
#include <QWidget>

namespace tessary {

OrdinaryWindows::OrdinaryWindows(const AppSettings& settings, WindowEffects& effects)
    : m_settings(settings),
      m_effects(effects)
{
    connect(&settings, &AppSettings::showDockIconChanged, this, &OrdinaryWindows::applyToAll);
}

void OrdinaryWindows::add(QWidget& window)
{
    m_windows.removeAll(nullptr);
    m_windows.append(&window);
    window.installEventFilter(this);
}

bool OrdinaryWindows::eventFilter(QObject* watched, QEvent* event)
{
    // Qt tells of this before it maps the window; spontaneous ones are of windows that were there.
    auto* window = qobject_cast<QWidget*>(watched);
    if (window != nullptr && event->type() == QEvent::Show && !event->spontaneous()) {
        apply(*window);
        // And once more when it is mapped: a window manager that is still busy with hiding it forgets what it
        // is told before.
        QMetaObject::invokeMethod(
            this, [this, later = QPointer<QWidget>(window)] { applyIfShown(later); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void OrdinaryWindows::apply(const QWidget& window)
{
    m_effects.setListed(window.winId(), m_settings.showDockIcon());
}

void OrdinaryWindows::applyIfShown(const QWidget* window)
{
    if (window != nullptr && window->isVisible())
        apply(*window);
}

void OrdinaryWindows::applyToAll()
{
    for (const QPointer<QWidget>& window : std::as_const(m_windows))
        applyIfShown(window);
}

} // namespace tessary
