#pragma once

#include "tests/session/ChildProcess.h"
#include "tests/support/Await.h"

#include <QProcess>
#include <QRegularExpression>

#include <csignal>

namespace tessary::testing {

/// An X server in a window of the desktop's. What is typed into that window comes to the inner server from a
/// keyboard of its own, as from a real one, and not as synthesised by a program.
class InnerServer {
public:
    InnerServer()
        : m_outerDisplay(qgetenv("DISPLAY")),
          m_server(QStringLiteral("Xephyr"),
                   {QStringLiteral("-screen"), QStringLiteral("800x600"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp"), QStringLiteral("-title"), QStringLiteral("inner server"),
                    QStringLiteral("-noreset"), QStringLiteral("-displayfd"), QStringLiteral("1")})
    {
        const QRegularExpression number(QStringLiteral("^(\\d+)\n"), QRegularExpression::MultilineOption);
        EXPECT_TRUE(eventually([&] { return number.match(m_server.output()).hasMatch(); }))
            << qPrintable(m_server.output());
        outer({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
               QStringLiteral("inner server"), QStringLiteral("windowactivate"), QStringLiteral("--sync")});
        qputenv("DISPLAY", ':' + number.match(m_server.output()).captured(1).toLatin1());
        m_windowManager = std::make_unique<ChildProcess>(QStringLiteral("openbox"),
                                                         QStringList{QStringLiteral("--sm-disable")});
        EXPECT_TRUE(eventually([] { return isManaged(); }));
    }
    ~InnerServer()
    {
        qputenv("DISPLAY", m_outerDisplay);
        end();
    }
    InnerServer(const InnerServer&) = delete;
    InnerServer& operator=(const InnerServer&) = delete;

    /// Types with the fingers.
    void outer(const QStringList& arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_outerDisplay));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("xdotool"), arguments);
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0);
    }

    /// All connections end at once. Asked to, the server takes its lock and its socket away.
    void end() { m_server.kill(SIGTERM); }

private:
    static bool isManaged()
    {
        QProcess process;
        process.start(QStringLiteral("xprop"),
                      {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
        return process.waitForFinished() && process.readAllStandardOutput().contains("0x");
    }

    QByteArray m_outerDisplay;
    ChildProcess m_server;
    std::unique_ptr<ChildProcess> m_windowManager;
};

} // namespace tessary::testing
