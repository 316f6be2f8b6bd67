#pragma once

#include "app/menubar/TessaryMenuBarIcon.h"
#include "platform/StatusHosts.h"
#include "platform/StatusItem.h"

#include <QTimer>

#include <functional>
#include <memory>

namespace tessary {

class AppSettings;

/// Our icon in the panel, there exactly while the setting says so, in the way that the present panel shows
/// icons best. One that only embeds windows is given a second to offer more. Main thread only.
class MenuBarExtra : public QObject {
    Q_OBJECT
public:
    /// Makes the icon for that kind of panel.
    using ItemMaker = std::function<std::unique_ptr<StatusItem>(StatusHosts::Kind)>;

    /// All references outlive this.
    MenuBarExtra(AppSettings& settings, DesktopAppearance& appearance, StatusHosts& hosts,
                 ItemMaker makeItem);

Q_SIGNALS:
    /// The icon was clicked with the main button.
    void activated();
    void menuRequested(const QPoint& position);

private:
    void update();
    void insert(StatusHosts::Kind kind);
    void remove();
    void paint();

    AppSettings& m_settings;
    DesktopAppearance& m_appearance;
    StatusHosts& m_hosts;
    ItemMaker m_makeItem;
    TessaryMenuBarIcon m_image;
    QTimer m_patience;
    bool m_hasToldOfNone = false;
    StatusHosts::Kind m_itemKind = StatusHosts::Kind::Unknown;
    std::unique_ptr<StatusItem> m_item;
};

} // namespace tessary
