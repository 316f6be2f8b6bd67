#include "app/SingleInstance.h"

#include "app/ApplicationIdentity.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcInstance, "tessary.instance")

namespace tessary {
namespace {

constexpr int kPatience = 3000; // milliseconds for the first program to answer

} // namespace

SingleInstance::Outcome SingleInstance::claim(QObject& object, IfAnother ifAnother)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCWarning(lcInstance, "no session bus: another start of the program would not find this one");
        return Outcome::First;
    }
    // The object first: whoever finds the name can call it at once.
    bus.registerObject(busObjectPath(), &object, QDBusConnection::ExportAdaptors);
    const auto reply =
        bus.interface()->registerService(applicationIdentifier(), QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return Outcome::First;
    if (ifAnother == IfAnother::IsLeftAlone)
        return Outcome::HandedOver;
    const QDBusMessage call = QDBusMessage::createMethodCall(applicationIdentifier(), busObjectPath(),
                                                             busInterface(), QStringLiteral("ShowPanel"));
    const QDBusMessage answer = bus.call(call, QDBus::Block, kPatience);
    if (answer.type() == QDBusMessage::ErrorMessage)
        qCWarning(lcInstance, "Tessary runs already and does not answer");
    return Outcome::HandedOver;
}

} // namespace tessary
