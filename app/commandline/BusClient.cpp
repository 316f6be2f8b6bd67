#include "app/commandline/BusClient.h"

#include "app/ApplicationIdentity.h"
#include "app/bus/BusError.h"
#include "app/commandline/ExitStatus.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>

#include <chrono>
#include <limits>
#include <thread>

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kStartPatience = 20s;
constexpr auto kStartGlance = 20ms;
constexpr int kOrdinary = 60'000; // milliseconds
constexpr int kEndless = std::numeric_limits<int>::max();

QDBusMessage methodCall(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(applicationIdentifier(), busObjectPath(), busInterface(), method);
    message.setArguments(arguments);
    message.setAutoStartService(false); // started by us, in the session that we are called in
    return message;
}

CommandError failure(const QString& sentence)
{
    return {ExitStatus::Failed, sentence};
}

ExitStatus statusOf(BusError::Case which)
{
    switch (which) {
    case BusError::Case::NotFound:
        return ExitStatus::NotFound;
    case BusError::Case::InvalidArgument:
        return ExitStatus::WrongUse;
    case BusError::Case::Failed:
        break;
    }
    return ExitStatus::Failed;
}

} // namespace

BusClient::BusClient(Start start) : m_bus(QDBusConnection::sessionBus()), m_start(std::move(start))
{
    if (!m_bus.isConnected())
        throw failure(QStringLiteral("there is no session bus to reach Tessary on"));
}

bool BusClient::isRunning()
{
    return m_bus.interface()->isServiceRegistered(applicationIdentifier()).value();
}

void BusClient::ensureRunning()
{
    if (isRunning())
        return;
    const HasEnded hasEnded = m_start();
    QDeadlineTimer deadline(kStartPatience);
    while (!isRunning()) {
        // Asked last: one that found another just started has ended as well.
        if (hasEnded() && !isRunning())
            throw failure(QStringLiteral("Tessary could not be started"));
        if (deadline.hasExpired())
            throw failure(QStringLiteral("Tessary was started and does not answer"));
        std::this_thread::sleep_for(kStartGlance);
    }
}

QVariantList BusClient::call(const QString& method, const QVariantList& arguments, Patience patience)
{
    ensureRunning();
    const int timeout = patience == Patience::Ordinary ? kOrdinary : kEndless;
    return argumentsOf(m_bus.call(methodCall(method, arguments), QDBus::Block, timeout));
}

QDBusPendingCall BusClient::begin(const QString& method, const QVariantList& arguments)
{
    return m_bus.asyncCall(methodCall(method, arguments), kEndless);
}

QVariantList BusClient::result(QDBusPendingCall call)
{
    call.waitForFinished(); // lint-allow(nested-loop): this process has nothing else to do
    return argumentsOf(call.reply());
}

QVariantList BusClient::argumentsOf(const QDBusMessage& answer)
{
    if (answer.type() != QDBusMessage::ErrorMessage)
        return answer.arguments();
    if (const std::optional<BusError::Case> which = BusError::caseOf(answer.errorName()))
        throw CommandError(statusOf(*which), answer.errorMessage());
    if (answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownMethod"))
        throw failure(QStringLiteral("the Tessary that runs is of another version"));
    if (answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply"))
        throw failure(QStringLiteral("Tessary does not answer"));
    throw failure(answer.errorMessage());
}

bool BusClient::followChanges(QObject* receiver, const char* slot)
{
    return m_bus.connect(applicationIdentifier(), busObjectPath(), busInterface(),
                         QStringLiteral("LibraryChanged"), receiver, slot);
}

} // namespace tessary
