#include "app/commandline/ChangeWatcher.h"

#include "app/ApplicationIdentity.h"
#include "app/commandline/BusClient.h"
#include "app/commandline/ExitStatus.h"

#include <QDateTime>

#include <cstdio>

namespace tessary {

ChangeWatcher::ChangeWatcher(BusClient& client)
    : m_service(applicationIdentifier(), client.bus(), QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&m_service, &QDBusServiceWatcher::serviceUnregistered, this, &ChangeWatcher::ended);
    if (!client.followChanges(this, SLOT(print(QString, QStringList))))
        throw CommandError(ExitStatus::Failed, QStringLiteral("the changes cannot be followed"));
}

void ChangeWatcher::print(const QString& kind, const QStringList& ids)
{
    const QString time = QDateTime::currentDateTime().toString(Qt::ISODate);
    const QByteArray line = (QStringList{time, kind} + ids).join(QLatin1Char('\t')).toUtf8() + '\n';
    std::fputs(line.constData(), stdout);
    std::fflush(stdout); // a pipe hears of it now
}

} // namespace tessary
