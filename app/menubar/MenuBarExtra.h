#pragma once

#include "app/menubar/TessaryMenuBarIcon.h"
#include "platform/StatusHosts.h"

#include <QSystemTrayIcon>
#include <QTimer>

#include <memory>

class QMenu;

namespace tessary {

class AppSettings;

/// The icon in the panel, there exactly while the setting says so. A click on it is `activated`; its menu
/// comes with the other button, or as the panel has it. Main thread only.
///
/// Qt decides when the first icon is made, and for good, which kind of panel it will be for. So none is
/// made before there is a panel, and one that only embeds windows is given a second to offer more.
class MenuBarExtra : public QObject {
    Q_OBJECT
public:
    /// All of them outlive this.
    MenuBarExtra(AppSettings& settings, DesktopAppearance& appearance, StatusHosts& hosts, QMenu& menu);

    /// Null while there is none.
    [[nodiscard]] QSystemTrayIcon* icon() const { return m_icon.get(); }

Q_SIGNALS:
    void activated();

private:
    void update();
    void insert();
    void paint();

    AppSettings& m_settings;
    DesktopAppearance& m_appearance;
    StatusHosts& m_hosts;
    QMenu& m_menu;
    TessaryMenuBarIcon m_image;
    QTimer m_patience;
    bool m_hasToldOfNone = false;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace tessary
