#pragma once

#include "platform/StatusItem.h"

#include <QSystemTrayIcon>

namespace tessary {

/// Our icon as a small window in a tray that embeds such; the menu is ours to show. To be made only while
/// there is no status-notifier host: when its first icon is made, Qt chooses between the two for good.
class EmbeddedStatusItem : public StatusItem {
    Q_OBJECT
public:
    explicit EmbeddedStatusItem(const QString& title);

    void setIcon(const QIcon& icon) override;

private:
    [[nodiscard]] QPoint menuPosition() const;

    QSystemTrayIcon m_icon;
};

} // namespace tessary
