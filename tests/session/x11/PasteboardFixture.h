#pragma once

#include "platform/workers/ImagingWorkerCodec.h"
#include "platform/x11/X11Pasteboard.h"
#include "tests/session/ChildProcess.h"
#include "tests/session/TestPictures.h"
#include "tests/session/x11/Requestor.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QProcess>

namespace tessary::testing {

/// The real clipboard with the real imaging worker.
class PasteboardFixture : public ::testing::Test {
protected:
    bool write(const QString& text, PasteboardReach reach = PasteboardReach::Clipboard)
    {
        return await(pasteboard->writeText(text, reach));
    }
    bool writeFile(const QString& path)
    {
        return await(pasteboard->writeImage(path, PasteboardReach::Clipboard));
    }
    [[nodiscard]] QString save(const char* name, const QByteArray& bytes) const
    {
        QFile target(folder.file(QString::fromLatin1(name)));
        EXPECT_TRUE(target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size());
        return target.fileName();
    }
    /// What xclip pastes, byte for byte, with our event loop running meanwhile.
    static QByteArray xclip(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral("xclip"), QStringList{QStringLiteral("-o")} + arguments);
        EXPECT_TRUE(eventually([&] { return process.state() == QProcess::NotRunning; }));
        return process.readAllStandardOutput();
    }
    static QByteArray xclipTarget(const char* target)
    {
        return xclip({QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-t"),
                      QString::fromLatin1(target)});
    }
    static QByteArray xclipSelection(const char* selection)
    {
        return xclip({QStringLiteral("-selection"), QString::fromLatin1(selection), QStringLiteral("-t"),
                      QStringLiteral("UTF8_STRING")});
    }
    /// Another program takes a selection.
    static void takeAway(const char* selection, const QByteArray& text)
    {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QStringLiteral("xclip"),
                      {QStringLiteral("-i"), QStringLiteral("-selection"), QString::fromLatin1(selection)});
        EXPECT_TRUE(process.waitForStarted());
        process.write(text);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished());
        // It goes into the background before the server has heard of it.
        EXPECT_TRUE(eventually([&] { return xclipSelection(selection) == text; }));
    }

    TemporaryFolder folder;
    ImagingWorkerCodec codec{{.program = QStringLiteral(TESSARY_IMAGING_PROGRAM)}};
    std::unique_ptr<X11Pasteboard> pasteboard = std::make_unique<X11Pasteboard>(codec);
};

} // namespace tessary::testing
