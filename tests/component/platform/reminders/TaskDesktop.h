#pragma once

#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QJsonDocument>

#include <csignal>
#include <unistd.h>

namespace tessary::testing {

/// A home and a bus of its own, on which Evolution Data Server can be started. What was started is gone
/// afterwards. The environment of this process says so too, for the client library in it.
class TaskDesktop {
public:
    TaskDesktop()
    {
        for (const auto& [variable, folder] :
             {std::pair("HOME", "home"), std::pair("XDG_DATA_HOME", "data"),
              std::pair("XDG_CONFIG_HOME", "config"), std::pair("XDG_CACHE_HOME", "cache"),
              std::pair("XDG_RUNTIME_DIR", "runtime")}) {
            const QString place = path(QLatin1String(folder));
            EXPECT_TRUE(QDir().mkpath(place));
            qputenv(variable, place.toUtf8());
        }
        EXPECT_TRUE(QFile::setPermissions(path(QStringLiteral("runtime")),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("GSETTINGS_BACKEND", "keyfile"); // shared by the processes of this home
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "LD_PRELOAD"})
            qunsetenv(variable);
    }
    ~TaskDesktop()
    {
        m_bus.reset();
        signal(SIGKILL);
        EXPECT_TRUE(eventually([this] { return processes().isEmpty(); }));
    }
    TaskDesktop(const TaskDesktop&) = delete;
    TaskDesktop& operator=(const TaskDesktop&) = delete;

    enum class Service { Installed, Missing };
    /// @param policy more rules of the bus.
    [[nodiscard]] bool start(Service service = Service::Installed, const QString& policy = {})
    {
        const QString services = path(QStringLiteral("services"));
        EXPECT_TRUE(QDir().mkpath(services));
        const QDir described(QStringLiteral("/usr/share/dbus-1/services"));
        if (service == Service::Installed) {
            for (const QString& name :
                 described.entryList({QStringLiteral("org.gnome.evolution.dataserver.*")}))
                EXPECT_TRUE(QFile::copy(described.filePath(name), services + QLatin1Char('/') + name));
        }
        m_bus = std::make_unique<PrivateBus>();
        PrivateBus::Options options;
        options.serviceFolder = services;
        options.policy = policy;
        const bool isStarted = m_bus->start(options);
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toUtf8());
        return isStarted;
    }
    void endBus() { m_bus.reset(); }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.file(name); }
    [[nodiscard]] QString busAddress() const { return m_bus->address(); }

    /// Those of the data server, known by their home.
    [[nodiscard]] QList<pid_t> processes() const
    {
        QList<pid_t> found;
        const QByteArray home = "HOME=" + path(QStringLiteral("home")).toUtf8();
        for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
            const pid_t process = entry.toInt();
            if (process > 0 && contents(entry, "comm").startsWith("evolution-") &&
                contents(entry, "environ").split('\0').contains(home))
                found.append(process);
        }
        return found;
    }
    /// Sends it to all of them.
    void signal(int number) const
    {
        for (const pid_t process : processes())
            ::kill(process, number);
    }

    /// What another program does with the default list. @returns what it printed.
    [[nodiscard]] static QJsonDocument ask(const QString& verb)
    {
        QProcess client;
        client.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(TESSARY_TASKS_CLIENT), verb});
        EXPECT_TRUE(client.waitForFinished(static_cast<int>(kDeadline.count())));
        EXPECT_EQ(client.exitCode(), 0) << client.readAllStandardError().constData();
        return QJsonDocument::fromJson(client.readAllStandardOutput());
    }

private:
    static QByteArray contents(const QString& process, const char* name)
    {
        QFile file(QStringLiteral("/proc/%1/%2").arg(process, QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TemporaryFolder m_folder;
    std::unique_ptr<PrivateBus> m_bus;
};

} // namespace tessary::testing
