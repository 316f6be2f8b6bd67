#pragma once

#include <QDBusConnection>
#include <QString>

namespace tessary {

/// Names a connection to a bus that nobody else uses, so that it can be opened where waiting is allowed.
/// Copies name the same connection.
class OwnBusConnection {
public:
    /// @param purpose for whoever looks at the connections. @param address of the bus; empty means the
    /// session bus.
    OwnBusConnection(const QString& purpose, QString address);

    /// Connects unless that is done already. Waits for the bus: on a lane only.
    [[nodiscard]] bool open() const;
    [[nodiscard]] QDBusConnection bus() const { return QDBusConnection(m_name); }
    void close() const { QDBusConnection::disconnectFromBus(m_name); }

private:
    QString m_address;
    QString m_name;
};

} // namespace tessary
