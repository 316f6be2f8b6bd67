#include "platform/linux/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QPoint>
#include <QUuid>
#include <QtEndian>

namespace tessary {
namespace {

using namespace statusnotifier;

QString watcherService()
{
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}
QString itemPath()
{
    return QStringLiteral("/StatusNotifierItem");
}
QString menuPath()
{
    return QStringLiteral("/Menu");
}

Picture pictureOf(const QImage& source)
{
    const QImage image = source.convertToFormat(QImage::Format_ARGB32);
    Picture picture{image.width(), image.height(), {}};
    picture.bytes.reserve(image.sizeInBytes());
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = qToBigEndian(line[x]);
            picture.bytes.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return picture;
}

} // namespace

StatusNotifierItem::StatusNotifierItem(QString title, QList<QAction*> rows, QString busAddress)
    : m_title(std::move(title)),
      m_busAddress(std::move(busAddress)),
      m_connectionName(QStringLiteral("tessary-item-") + QUuid::createUuid().toString()),
      m_menu(std::move(rows)),
      m_lane(QStringLiteral("tessary-item"))
{
    m_lane.postDetached([this] { connectToBus(); }); // which waits for the bus
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_lane.postDetached([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

void StatusNotifierItem::setIcon(const QIcon& icon)
{
    m_pictures.clear();
    for (const QSize& size : icon.availableSizes())
        m_pictures.append(pictureOf(icon.pixmap(size, 1).toImage()));
    Q_EMIT NewIcon();
    exportObjects();
}

QDBusObjectPath StatusNotifierItem::menu() const
{
    return QDBusObjectPath(menuPath());
}

void StatusNotifierItem::connectToBus()
{
    const bool isConnected =
        (m_busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)
                                : QDBusConnection::connectToBus(m_busAddress, m_connectionName))
            .isConnected();
    if (isConnected)
        QMetaObject::invokeMethod(this, &StatusNotifierItem::exportObjects, Qt::QueuedConnection);
}

/// Once there are both a connection and an icon: hosts read everything as soon as they hear of the item.
void StatusNotifierItem::exportObjects()
{
    QDBusConnection bus(m_connectionName);
    if (m_isExported || m_pictures.isEmpty() || !bus.isConnected())
        return;
    m_isExported = true;
    bus.registerObject(itemPath(), this, QDBusConnection::ExportScriptableContents);
    bus.registerObject(menuPath(), &m_menu, QDBusConnection::ExportScriptableContents);
    auto* watcher =
        new QDBusServiceWatcher(watcherService(), bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierItem::announce);
    announce();
}

void StatusNotifierItem::announce()
{
    const QDBusConnection bus(m_connectionName);
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherService(), QStringLiteral("/StatusNotifierWatcher"),
                                       watcherService(), QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({bus.baseService()});
    bus.asyncCall(call);
}

void StatusNotifierItem::Activate(int, int)
{
    QMetaObject::invokeMethod(this, &StatusItem::activated, Qt::QueuedConnection);
}

void StatusNotifierItem::SecondaryActivate(int, int) {}

void StatusNotifierItem::ContextMenu(int x, int y)
{
    Q_EMIT menuRequested(QPoint(x, y));
}

void StatusNotifierItem::Scroll(int, const QString&) {}

} // namespace tessary
