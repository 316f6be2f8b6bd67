#include "platform/linux/TaskService.h"

#include <qcoro/qcorodbuspendingcall.h>

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QRegularExpression>

#include <array>

namespace tessary {
namespace {

constexpr int kPatience = 2000; // milliseconds for the bus itself

QDBusMessage busCall(const QString& method)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
}

/// The list of sources and the calendars; both carry the version of their interface.
const std::array<QRegularExpression, 2>& partNames()
{
    static const std::array names{
        QRegularExpression(QStringLiteral("^org\\.gnome\\.evolution\\.dataserver\\.Sources\\d+$")),
        QRegularExpression(QStringLiteral("^org\\.gnome\\.evolution\\.dataserver\\.Calendar\\d+$"))};
    return names;
}

} // namespace

TaskService::TaskService(const QString& busAddress)
    : m_connection(QStringLiteral("tessary-tasks"), busAddress),
      m_lane(QStringLiteral("tessary-tasks"))
{
}

TaskService::~TaskService()
{
    m_lane.postDetached([connection = m_connection] { connection.close(); });
}

QCoro::Task<bool> TaskService::isReachable()
{
    auto asking = m_lane.post([this] { return parts().size() == qsizetype(partNames().size()); });
    co_return co_await asking;
}

QStringList TaskService::parts() const
{
    if (!m_connection.open())
        return {};
    const QStringList all =
        names(QStringLiteral("ListNames")) + names(QStringLiteral("ListActivatableNames"));
    QStringList found;
    for (const QRegularExpression& part : partNames()) {
        const QStringList matching = all.filter(part);
        if (!matching.isEmpty())
            found.append(matching.first());
    }
    return found;
}

QStringList TaskService::names(const QString& method) const
{
    const QDBusMessage answer = m_connection.bus().call(busCall(method), QDBus::Block, kPatience);
    return answer.arguments().value(0).toStringList();
}

QCoro::Task<TaskService::Answer> TaskService::wake(QDeadlineTimer deadline)
{
    auto asking = m_lane.post([this] { return parts(); });
    const QStringList all = co_await asking;
    if (all.size() != qsizetype(partNames().size()))
        co_return Answer::Absent;
    for (const QString& name : all) {
        const Answer answer = co_await ping(name, deadline);
        if (answer != Answer::Awake)
            co_return answer;
    }
    co_return Answer::Awake;
}

QCoro::Task<TaskService::Answer> TaskService::ping(QString name, QDeadlineTimer deadline)
{
    const QDBusMessage question =
        QDBusMessage::createMethodCall(name, QStringLiteral("/org/gnome/evolution/dataserver"),
                                       QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    const int patience = std::max(1, static_cast<int>(deadline.remainingTime()));
    const QDBusPendingCall call = m_connection.bus().asyncCall(question, patience);
    const QDBusMessage answer = co_await call;
    if (answer.type() != QDBusMessage::ErrorMessage)
        co_return Answer::Awake;
    qInfo("The task service does not answer: %s", qUtf8Printable(answer.errorName()));
    switch (QDBusError(answer).type()) {
    case QDBusError::AccessDenied:
        co_return Answer::Refused;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        co_return Answer::Silent;
    default:
        co_return Answer::Absent;
    }
}

} // namespace tessary
