#pragma once

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace tessary::testing {

/// What a program printed on both of its outputs, and how it ended. -1 stands for a program that did not
/// run to its end.
struct ProgramResult {
    int exitStatus = -1;
    QString output;
};

inline ProgramResult runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, program + QStringLiteral(": ") + process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

inline QString sourcePath(const char* name)
{
    return QStringLiteral(TESSARY_SOURCE_FOLDER "/packaging/") + QLatin1String(name);
}

} // namespace tessary::testing
