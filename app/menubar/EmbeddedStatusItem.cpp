#include "app/menubar/EmbeddedStatusItem.h"

#include <QMenu>

namespace tessary {

EmbeddedStatusItem::EmbeddedStatusItem(const QString& title, QMenu& menu)
{
    m_icon.setToolTip(title);
    m_icon.setContextMenu(&menu);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            Q_EMIT activated();
    });
}

void EmbeddedStatusItem::setIcon(const QIcon& icon)
{
    m_icon.setIcon(icon);
    m_icon.show();
}

} // namespace tessary
