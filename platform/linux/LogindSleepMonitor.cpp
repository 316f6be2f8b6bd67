#include "platform/linux/LogindSleepMonitor.h"

#include <QDBusConnection>
#include <QUuid>

namespace tessary {

LogindSleepMonitor::LogindSleepMonitor(QString busAddress, QObject* parent)
    : QObject(parent),
      m_busAddress(std::move(busAddress)),
      m_connectionName(QStringLiteral("tessary-sleep-") + QUuid::createUuid().toString()),
      m_lane(QStringLiteral("tessary-sleep"))
{
    // Connecting waits for the bus, and asking for the signal of a named service does once more.
    m_lane.postDetached([this] { connectToBus(); });
}

LogindSleepMonitor::~LogindSleepMonitor()
{
    m_lane.postDetached([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

void LogindSleepMonitor::connectToBus()
{
    QDBusConnection bus = m_busAddress.isEmpty()
                              ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, m_connectionName)
                              : QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    if (!bus.isConnected())
        return;
    const bool heard =
        bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                    SLOT(prepareForSleep(bool)));
    if (heard)
        QMetaObject::invokeMethod(this, &LogindSleepMonitor::listening, Qt::QueuedConnection);
}

void LogindSleepMonitor::prepareForSleep(bool goingToSleep)
{
    if (!goingToSleep)
        Q_EMIT wokeUp();
}

} // namespace tessary
