#pragma once

#include "tests/session/panel/PanelSession.h"

#include <QProcess>

namespace tessary::testing {

/// A person with a screen reader, who presses no keys but the shortcut and uses no pointer.
class ScreenReaderSession : public PanelSession {
protected:
    /// What the screen reader prints; a failure when it does not get on.
    QString reader(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(TESSARY_SCREEN_READER), arguments);
        EXPECT_TRUE(eventually([&] { return process.state() == QProcess::NotRunning; }))
            << qPrintable(arguments.join(QLatin1Char(' ')));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    ChildProcess& listening(const QStringList& kinds)
    {
        ChildProcess& listener =
            program(QStringLiteral(TESSARY_SCREEN_READER), QStringList{QStringLiteral("listen")} + kinds);
        EXPECT_TRUE(listener.printed(QStringLiteral("listening")));
        return listener;
    }
};

} // namespace tessary::testing
