#include "platform/linux/LogindSleepMonitor.h"

#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QFile>
#include <QProcess>

namespace tessary {
namespace {

using testing::eventually;

/// A system bus of its own with a stand-in for the login service.
class LogindSleepMonitorTest : public ::testing::Test {
protected:
    void startBus()
    {
        address = QStringLiteral("unix:path=") + folder.file(QStringLiteral("bus"));
        bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                  QStringLiteral("--address=") + address});
        ASSERT_TRUE(bus.waitForStarted());
        ASSERT_TRUE(eventually([this] { return QFile::exists(folder.file(QStringLiteral("bus"))); }));
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", address.toUtf8());
    }
    void startLoginService()
    {
        login.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
                     QStringLiteral("--template"), QStringLiteral("logind")});
        ASSERT_TRUE(login.waitForStarted());
        ASSERT_TRUE(eventually(
            [] { return command({QStringLiteral("org.freedesktop.login1.Manager.CanSuspend")}); }));
    }
    void sleepOrWake(bool goingToSleep)
    {
        const QString value =
            QStringLiteral("[<%1>]").arg(goingToSleep ? QStringLiteral("true") : QStringLiteral("false"));
        ASSERT_TRUE(command({QStringLiteral("org.freedesktop.DBus.Mock.EmitSignal"),
                             QStringLiteral("org.freedesktop.login1.Manager"),
                             QStringLiteral("PrepareForSleep"), QStringLiteral("b"), value}));
    }
    static bool command(const QStringList& method)
    {
        return QProcess::execute(
                   QStringLiteral("gdbus"),
                   QStringList{QStringLiteral("call"), QStringLiteral("--system"), QStringLiteral("--dest"),
                               QStringLiteral("org.freedesktop.login1"), QStringLiteral("--object-path"),
                               QStringLiteral("/org/freedesktop/login1"), QStringLiteral("--method")} +
                       method) == 0;
    }
    void TearDown() override
    {
        for (QProcess* process : {&login, &bus}) {
            process->kill();
            process->waitForFinished();
        }
        qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }

    testing::TemporaryFolder folder;
    QString address;
    QProcess bus;
    QProcess login;
};

TEST_F(LogindSleepMonitorTest, TellsOfWakingUpButNotOfFallingAsleep)
{
    startBus();
    startLoginService();
    LogindSleepMonitor monitor(address);
    int wakes = 0;
    bool listening = false;
    QObject::connect(&monitor, &LogindSleepMonitor::wokeUp, [&] { ++wakes; });
    QObject::connect(&monitor, &LogindSleepMonitor::listening, [&] { listening = true; });
    ASSERT_TRUE(eventually([&] { return listening; }));
    sleepOrWake(true);
    sleepOrWake(false);
    EXPECT_TRUE(eventually([&] { return wakes == 1; }));
    sleepOrWake(false);
    EXPECT_TRUE(eventually([&] { return wakes == 2; }));
}

TEST_F(LogindSleepMonitorTest, HearsALoginServiceThatStartsLater)
{
    startBus();
    LogindSleepMonitor monitor(address);
    int wakes = 0;
    bool listening = false;
    QObject::connect(&monitor, &LogindSleepMonitor::wokeUp, [&] { ++wakes; });
    QObject::connect(&monitor, &LogindSleepMonitor::listening, [&] { listening = true; });
    ASSERT_TRUE(eventually([&] { return listening; }));
    startLoginService();
    sleepOrWake(false);
    EXPECT_TRUE(eventually([&] { return wakes == 1; }));
}

TEST_F(LogindSleepMonitorTest, StaysSilentWithoutASystemBus)
{
    address = QStringLiteral("unix:path=/nowhere/bus");
    bool heard = false;
    {
        LogindSleepMonitor monitor(address);
        QObject::connect(&monitor, &LogindSleepMonitor::listening, [&] { heard = true; });
        QObject::connect(&monitor, &LogindSleepMonitor::wokeUp, [&] { heard = true; });
    }
    EXPECT_FALSE(heard);
}

} // namespace
} // namespace tessary
