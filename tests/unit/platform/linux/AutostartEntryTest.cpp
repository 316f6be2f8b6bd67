#include "platform/linux/AutostartEntry.h"

#include "base/FileError.h"
#include "platform/linux/DesktopEntry.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/ScopedEnvironment.h"
#include "tests/unit/platform/linux/WriteFile.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

namespace tessary {
namespace {

using testing::await;
using testing::writeFile;

class AutostartEntryTest : public ::testing::Test {
protected:
    AutostartEntryTest()
    {
        environment.set("XDG_CONFIG_HOME", folder.file(QStringLiteral("config")));
        environment.set("XDG_CONFIG_DIRS", folder.file(QStringLiteral("shared")));
        program = makeProgram(QStringLiteral("bin"));
    }
    QString makeProgram(const QString& within) const
    {
        const QString path = folder.file(within + QStringLiteral("/tessary"));
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        EXPECT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        return path;
    }
    QString ownPath() const
    {
        return folder.file(QStringLiteral("config/autostart/com.tessary.Tessary.desktop"));
    }
    QString sharedPath() const
    {
        return folder.file(QStringLiteral("shared/autostart/com.tessary.Tessary.desktop"));
    }
    QByteArray entry(const QByteArray& more = {}) const
    {
        return "[Desktop Entry]\nType=Application\nName=x\nExec=" + program.toUtf8() + '\n' + more;
    }
    std::unique_ptr<AutostartEntry> makeItem(const QString& path) const
    {
        return std::make_unique<AutostartEntry>(folders, QStringLiteral("com.tessary.Tessary"), path);
    }

    testing::TemporaryFolder folder;
    testing::ScopedEnvironment environment;
    XdgFolders folders;
    QString program;
};

TEST_F(AutostartEntryTest, IsThereWhileItIsEnabled)
{
    const auto item = makeItem(program);
    EXPECT_FALSE(await(item->isEnabled()));
    await(item->enable());
    EXPECT_TRUE(await(item->isEnabled()));
    const auto written = readDesktopEntry(ownPath(), {});
    ASSERT_TRUE(written);
    EXPECT_EQ(written->executable, program);
    EXPECT_EQ(written->tryExecutable, program);
    await(item->disable());
    EXPECT_FALSE(await(item->isEnabled()));
    EXPECT_FALSE(QFile::exists(ownPath()));
    await(item->disable());
}

TEST_F(AutostartEntryTest, AProgramThatWasMovedIsEntered)
{
    await(makeItem(program)->enable());
    const QString moved = makeProgram(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QFile::remove(program));
    const auto item = makeItem(moved);
    EXPECT_FALSE(await(item->isEnabled()));
    await(item->enable());
    EXPECT_TRUE(await(item->isEnabled()));
    EXPECT_EQ(readDesktopEntry(ownPath(), {})->executable, moved);
}

TEST_F(AutostartEntryTest, AnyPathIsQuotedSoThatItComesBack)
{
    for (const char* name : {"with blank", "quote\"d", "100% %f %u", "$HOME `id`", "back\\slash\\",
                             "a'b;c&d|e", "图片 ", "~", "#=[x]"}) {
        const QString path = makeProgram(QString::fromUtf8(name));
        const auto item = makeItem(path);
        await(item->enable());
        EXPECT_TRUE(await(item->isEnabled())) << name;
        QString command = readDesktopEntry(ownPath(), {})->executable;
        EXPECT_EQ(command.replace(QStringLiteral("%%"), QStringLiteral("%")), path) << name;
    }
}

TEST_F(AutostartEntryTest, IsAValidDesktopFile)
{
    const QString validator = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (validator.isEmpty())
        GTEST_SKIP() << "desktop-file-validate is not installed";
    for (const char* name : {"plain", "with blank", "quote\"d $x `y`", "back\\slash"}) {
        await(makeItem(makeProgram(QString::fromUtf8(name)))->enable());
        QProcess check;
        check.start(validator, {ownPath()});
        ASSERT_TRUE(check.waitForFinished());
        EXPECT_EQ(check.exitCode(), 0) << check.readAll().constData();
    }
}

TEST_F(AutostartEntryTest, WhatOthersWroteThereIsHonoured)
{
    const auto item = makeItem(program);
    const auto isEnabledWith = [&](const QByteArray& bytes) {
        writeFile(ownPath(), bytes);
        return await(item->isEnabled());
    };
    EXPECT_TRUE(isEnabledWith(entry()));
    EXPECT_TRUE(isEnabledWith(entry("X-GNOME-Autostart-enabled=true\n")));
    EXPECT_FALSE(isEnabledWith(entry("X-GNOME-Autostart-enabled=false\n")));
    EXPECT_FALSE(isEnabledWith(entry("Hidden=true\n")));
    EXPECT_FALSE(isEnabledWith(entry("TryExec=/not/there\n")));
    EXPECT_TRUE(isEnabledWith(entry("TryExec=sh\n")));
    EXPECT_FALSE(isEnabledWith("[Desktop Entry]\nType=Application\nName=x\n"));
    EXPECT_FALSE(isEnabledWith("rubbish"));
    EXPECT_FALSE(isEnabledWith({}));
}

TEST_F(AutostartEntryTest, AnEntryForEverybodyIsHiddenRatherThanRemoved)
{
    const auto item = makeItem(program);
    writeFile(sharedPath(), entry());
    EXPECT_TRUE(await(item->isEnabled()));
    await(item->disable());
    EXPECT_FALSE(await(item->isEnabled()));
    EXPECT_TRUE(readDesktopEntry(ownPath(), {})->hidden);
    EXPECT_TRUE(QFile::exists(sharedPath()));
    await(item->enable());
    EXPECT_TRUE(await(item->isEnabled()));
}

TEST_F(AutostartEntryTest, AFolderThatCannotBeMadeIsAnError)
{
    writeFile(folder.file(QStringLiteral("config")), "a file");
    EXPECT_THROW(await(makeItem(program)->enable()), FileError);
    EXPECT_FALSE(await(makeItem(program)->isEnabled()));
}

TEST_F(AutostartEntryTest, ALinkWithoutATargetIsReplaced)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(ownPath()).path()));
    ASSERT_TRUE(QFile::link(QStringLiteral("/not/there"), ownPath()));
    const auto item = makeItem(program);
    EXPECT_FALSE(await(item->isEnabled()));
    await(item->enable());
    EXPECT_TRUE(await(item->isEnabled()));
}

} // namespace
} // namespace tessary
