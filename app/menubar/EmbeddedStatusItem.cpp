#include "app/menubar/EmbeddedStatusItem.h"

#include <QGuiApplication>
#include <QScreen>

namespace tessary {

EmbeddedStatusItem::EmbeddedStatusItem(const QString& title)
{
    m_icon.setToolTip(title);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            Q_EMIT activated();
        else if (reason == QSystemTrayIcon::Context)
            Q_EMIT menuRequested(menuPosition());
    });
}

void EmbeddedStatusItem::setIcon(const QIcon& icon)
{
    m_icon.setIcon(icon);
    m_icon.show();
}

/// At the icon's edge that is away from the screen's: a menu that has no room below goes above.
QPoint EmbeddedStatusItem::menuPosition() const
{
    const QRect icon = m_icon.geometry();
    const QScreen* screen = QGuiApplication::screenAt(icon.center());
    const bool isAtTheTop = screen == nullptr || icon.center().y() < screen->geometry().center().y();
    return isAtTheTop ? icon.bottomLeft() + QPoint(0, 1) : icon.topLeft();
}

} // namespace tessary
