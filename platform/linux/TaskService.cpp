#include "platform/linux/TaskService.h"

#include "platform/Permissions.h"

#include <QDBusMessage>
#include <QRegularExpression>

#include <array>

namespace tessary {
namespace {

constexpr int kPatience = 2000;       // milliseconds for the bus itself
constexpr int kStartPatience = 20000; // milliseconds; a cold start reads a lot

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

QCoro::Task<> TaskService::start()
{
    auto starting = m_lane.post([this] { startNow(); });
    co_await starting;
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

void TaskService::startNow() const
{
    const QStringList all = parts();
    if (all.size() != qsizetype(partNames().size()))
        throw PermissionError(PermissionError::Case::NoTaskService);
    const QStringList running = names(QStringLiteral("ListNames"));
    for (const QString& name : all) {
        if (running.contains(name))
            continue;
        QDBusMessage request = busCall(QStringLiteral("StartServiceByName"));
        request.setArguments({name, 0U});
        const QDBusMessage answer = m_connection.bus().call(request, QDBus::Block, kStartPatience);
        if (answer.type() == QDBusMessage::ErrorMessage) {
            qInfo("The task service did not start: %s", qUtf8Printable(answer.errorName()));
            throw PermissionError(PermissionError::Case::TaskServiceFailed);
        }
    }
}

} // namespace tessary
