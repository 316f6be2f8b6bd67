#pragma once

#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QProcess>

namespace tessary::testing {

/// A message bus of its own for one test, gone afterwards. It starts no services.
class PrivateBus {
public:
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    /// @returns whether it takes connections now.
    [[nodiscard]] bool start()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--address=") + address()});
        return m_daemon.waitForStarted() &&
               eventually([this] { return QFile::exists(m_folder.file(QStringLiteral("bus"))); });
    }
    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + m_folder.file(QStringLiteral("bus"));
    }

private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
};

} // namespace tessary::testing
