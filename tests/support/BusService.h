#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QUuid>

#include <functional>

namespace tessary::testing {

/// A service with one object on a bus, on a connection of its own, whose methods a function answers.
class BusService : public QDBusVirtualObject {
public:
    /// The answer to a call; nothing leaves the caller waiting.
    using Method = std::function<std::optional<QDBusMessage>(const QDBusMessage& call)>;

    BusService(const QString& busAddress, QString service, QString path, Method method)
        : m_name(QUuid::createUuid().toString()),
          m_service(std::move(service)),
          m_path(std::move(path)),
          m_method(std::move(method)),
          m_bus(QDBusConnection::connectToBus(busAddress, m_name))
    {
        m_bus.registerVirtualObject(m_path, this);
        m_bus.registerService(m_service);
    }
    ~BusService() override { QDBusConnection::disconnectFromBus(m_name); }

    [[nodiscard]] bool isRegistered() const { return m_bus.objectRegisteredAt(m_path) == this; }
    void emitSignal(const QString& interface, const QString& signal, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(m_path, interface, signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }
    [[nodiscard]] QDBusConnection& bus() { return m_bus; }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const std::optional<QDBusMessage> answer = m_method(message);
        if (answer)
            connection.send(*answer);
        else
            message.setDelayedReply(true);
        return true;
    }

private:
    QString m_name;
    QString m_service;
    QString m_path;
    Method m_method;
    QDBusConnection m_bus;
};

} // namespace tessary::testing
