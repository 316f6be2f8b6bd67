#include "platform/x11/X11StatusHosts.h"

#include "platform/x11/AtomCache.h"
#include "platform/x11/XcbReply.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

#include <xcb/xfixes.h>

namespace tessary {
namespace {

constexpr uint8_t kSentFlag = 0x80;

QString watcherService()
{
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

/// Null where Qt does not speak to an X server.
xcb_connection_t* qtConnection()
{
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

} // namespace

X11StatusHosts::X11StatusHosts(const QDBusConnection& bus, QObject* parent)
    : StatusHosts(parent),
      m_watch(watcherService(), bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    watchTray();
    connect(&m_watch, &QDBusServiceWatcher::serviceRegistered, this, [this] { setWatcher(true); });
    connect(&m_watch, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setWatcher(false); });
    askForWatcher(bus);
}

X11StatusHosts::~X11StatusHosts()
{
    qApp->removeNativeEventFilter(this);
}

void X11StatusHosts::askForWatcher(const QDBusConnection& bus)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question.setArguments({watcherService()});
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<bool> reply = *answer;
        if (!m_hasWatcher) // or a change was told meanwhile
            setWatcher(reply.isValid() && reply.value());
    });
}

void X11StatusHosts::setWatcher(bool isThere)
{
    m_hasWatcher = isThere;
    update();
}

void X11StatusHosts::watchTray()
{
    xcb_connection_t* connection = qtConnection();
    const xcb_query_extension_reply_t* extension =
        connection == nullptr ? nullptr : xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        return;
    m_ownerEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    m_traySelection = AtomCache(connection).atom("_NET_SYSTEM_TRAY_S0");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_xfixes_select_selection_input(connection, root, m_traySelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, m_traySelection), nullptr));
    m_hasTray = owner && owner->owner != XCB_WINDOW_NONE;
    qApp->installNativeEventFilter(this);
}

bool X11StatusHosts::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if ((event.response_type & ~kSentFlag) != m_ownerEvent)
        return false;
    const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notify.selection != m_traySelection)
        return false;
    m_hasTray =
        notify.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && notify.owner != XCB_WINDOW_NONE;
    update();
    return false;
}

void X11StatusHosts::update()
{
    if (!m_hasWatcher)
        return;
    const Kind kind = *m_hasWatcher ? Kind::StatusNotifier : m_hasTray ? Kind::Embedding : Kind::None;
    if (kind == m_kind)
        return;
    m_kind = kind;
    Q_EMIT changed();
}

} // namespace tessary
