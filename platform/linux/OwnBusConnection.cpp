#include "platform/linux/OwnBusConnection.h"

#include <QUuid>

namespace tessary {

OwnBusConnection::OwnBusConnection(const QString& purpose, QString address)
    : m_address(std::move(address)),
      m_name(purpose + QLatin1Char('-') + QUuid::createUuid().toString())
{
}

bool OwnBusConnection::open() const
{
    if (bus().isConnected())
        return true;
    close(); // one that was lost keeps its name
    return (m_address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name)
                                : QDBusConnection::connectToBus(m_address, m_name))
        .isConnected();
}

} // namespace tessary
