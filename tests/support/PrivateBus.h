#pragma once

#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QProcess>

namespace tessary::testing {

/// A message bus of its own for one test, gone afterwards. It starts no services unless it is told where some
/// are described.
class PrivateBus {
public:
    struct Options {
        QString serviceFolder; ///< With descriptions of services that it starts; empty for none.
        QString policy;        ///< More rules, as its configuration has them.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment(); ///< Of what it starts.
    };

    PrivateBus() = default;
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// @returns whether it takes connections now.
    [[nodiscard]] bool start() { return start(Options()); }
    [[nodiscard]] bool start(const Options& options)
    {
        const QString configuration = m_folder.file(QStringLiteral("bus.conf"));
        QFile file(configuration);
        if (!file.open(QIODevice::WriteOnly) || file.write(configurationOf(options)) < 0)
            return false;
        file.close();
        m_daemon.setProcessEnvironment(options.environment);
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--config-file=") + configuration, QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile")});
        return m_daemon.waitForStarted() &&
               eventually([this] { return QFile::exists(m_folder.file(QStringLiteral("bus"))); });
    }
    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + m_folder.file(QStringLiteral("bus"));
    }

private:
    [[nodiscard]] QByteArray configurationOf(const Options& options) const
    {
        const QString services =
            options.serviceFolder.isEmpty()
                ? QString()
                : QStringLiteral("<servicedir>%1</servicedir>").arg(options.serviceFolder);
        return QStringLiteral(
                   "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\""
                   " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                   "<busconfig><type>session</type><listen>%1</listen>%2"
                   "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                   "<allow eavesdrop=\"true\"/><allow own=\"*\"/>%3</policy></busconfig>\n")
            .arg(address(), services, options.policy)
            .toUtf8();
    }

    TemporaryFolder m_folder;
    QProcess m_daemon;
};

} // namespace tessary::testing
