#pragma once

#include "platform/StatusHosts.h"

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <xcb/xcb.h>

namespace tessary {

/// The status-notifier watcher on the session bus, and the owner of the first screen's tray selection.
/// Listens on Qt's own connections: it waits for nothing but one answer of the X server at the start.
class X11StatusHosts : public StatusHosts, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit X11StatusHosts(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                            QObject* parent = nullptr);
    ~X11StatusHosts() override;

    [[nodiscard]] Kind kind() const override { return m_kind; }

private:
    void askForWatcher(const QDBusConnection& bus);
    void setWatcher(bool isThere);
    void watchTray();
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void update();

    QDBusServiceWatcher m_watch;
    std::optional<bool> m_hasWatcher; // absent until the bus has answered
    bool m_hasTray = false;
    xcb_atom_t m_traySelection = XCB_ATOM_NONE;
    uint8_t m_ownerEvent = 0;
    Kind m_kind = Kind::Unknown;
};

} // namespace tessary
