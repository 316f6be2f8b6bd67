#pragma once

#include "platform/StatusItem.h"

#include <QSystemTrayIcon>

class QMenu;

namespace tessary {

/// Our icon as a small window in a tray that embeds such, with a menu that we draw. To be made only while
/// there is no status-notifier host: when its first icon is made, Qt chooses between the two for good.
class EmbeddedStatusItem : public StatusItem {
    Q_OBJECT
public:
    /// @param menu outlives this.
    EmbeddedStatusItem(const QString& title, QMenu& menu);

    void setIcon(const QIcon& icon) override;

private:
    QSystemTrayIcon m_icon;
};

} // namespace tessary
