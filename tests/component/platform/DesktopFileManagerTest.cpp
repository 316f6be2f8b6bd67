#include "platform/linux/DesktopFileManager.h"

#include "tests/support/BusService.h"
#include "tests/support/NotingProgram.h"
#include "tests/support/PrivateBus.h"
#include "tests/unit/platform/linux/ScopedEnvironment.h"

#include <QDir>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

class DesktopFileManagerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("图 片"))));
        picture = folder.file(QStringLiteral("图 片/a b#1.png"));
        write(picture, "picture");
        environment.set("PATH", QDir().absoluteFilePath(folder.file(QStringLiteral("programs"))) +
                                    QStringLiteral(":/usr/bin:/bin"));
        ASSERT_TRUE(bus.start());
    }
    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    /// A program of that name that only notes what it was asked to open.
    void installOpener(const QString& name)
    {
        testing::installNotingProgram(folder.file(QStringLiteral("programs/") + name), notes());
    }
    /// None but the openers that a test installs.
    void hideOtherPrograms() { environment.set("PATH", folder.file(QStringLiteral("programs"))); }
    QString notes() const { return folder.file(QStringLiteral("opened")); }
    QString opened() const
    {
        if (!eventually([this] { return QFile::exists(notes()); }))
            return {};
        QFile file(notes());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    std::unique_ptr<testing::BusService> fileManager(const testing::BusService::Method& method)
    {
        return std::make_unique<testing::BusService>(bus.address(),
                                                     QStringLiteral("org.freedesktop.FileManager1"),
                                                     QStringLiteral("/org/freedesktop/FileManager1"), method);
    }
    /// A file manager that shows whatever it is asked to.
    std::unique_ptr<testing::BusService> willingFileManager()
    {
        return fileManager([this](const QDBusMessage& call) -> std::optional<QDBusMessage> {
            calls.append(call);
            return call.createReply();
        });
    }
    void reveal(const QString& path)
    {
        DesktopFileManager manager([] { return QStringLiteral("mark_TIME7"); }, bus.address());
        await(manager.reveal(path));
    }
    std::optional<FileManagerError::Case> failureOf(const QString& path)
    {
        try {
            reveal(path);
        } catch (const FileManagerError& error) {
            return error.which();
        }
        return std::nullopt;
    }

    testing::TemporaryFolder folder;
    testing::ScopedEnvironment environment;
    testing::PrivateBus bus;
    QString picture;
    QList<QDBusMessage> calls;
};

TEST_F(DesktopFileManagerTest, SelectsTheFile)
{
    const auto service = willingFileManager();
    reveal(picture);
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().interface(), QStringLiteral("org.freedesktop.FileManager1"));
    EXPECT_EQ(calls.first().member(), QStringLiteral("ShowItems"));
    const QString url = calls.first().arguments().value(0).toStringList().value(0);
    EXPECT_TRUE(url.startsWith(QLatin1String("file:///"))) << qPrintable(url);
    EXPECT_TRUE(url.endsWith(QLatin1String("/%E5%9B%BE%20%E7%89%87/a%20b%231.png"))) << qPrintable(url);
    EXPECT_EQ(calls.first().arguments().value(1).toString(), QStringLiteral("mark_TIME7"));
}

TEST_F(DesktopFileManagerTest, ShowsTheFolderOfAFileThatIsGone)
{
    const auto service = willingFileManager();
    ASSERT_TRUE(QFile::remove(picture));
    reveal(picture);
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().member(), QStringLiteral("ShowFolders"));
    const QString url = calls.first().arguments().value(0).toStringList().value(0);
    EXPECT_TRUE(url.endsWith(QLatin1String("/%E5%9B%BE%20%E7%89%87"))) << qPrintable(url);
}

TEST_F(DesktopFileManagerTest, AFileWhoseFolderIsGoneTooIsAnError)
{
    const auto service = willingFileManager();
    installOpener(QStringLiteral("xdg-open"));
    EXPECT_EQ(failureOf(folder.file(QStringLiteral("gone/picture.png"))), FileManagerError::Case::NoSuchFile);
    EXPECT_EQ(failureOf(QString()), FileManagerError::Case::NoSuchFile);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_FALSE(QFile::exists(notes()));
}

TEST_F(DesktopFileManagerTest, WithoutAFileManagerOnTheBusTheFolderIsOpened)
{
    installOpener(QStringLiteral("xdg-open"));
    reveal(picture);
    EXPECT_EQ(opened(), folder.file(QStringLiteral("图 片|")));
}

TEST_F(DesktopFileManagerTest, OneThatRefusesIsPassedOver)
{
    const auto service = fileManager([](const QDBusMessage& call) -> std::optional<QDBusMessage> {
        return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
    });
    installOpener(QStringLiteral("xdg-open"));
    reveal(picture);
    EXPECT_EQ(opened(), folder.file(QStringLiteral("图 片|")));
}

TEST_F(DesktopFileManagerTest, TakesAnotherOpenerWhereTheUsualOneIsMissing)
{
    installOpener(QStringLiteral("gio"));
    hideOtherPrograms();
    reveal(picture);
    EXPECT_EQ(opened(), QStringLiteral("open|") + folder.file(QStringLiteral("图 片|")));
}

TEST_F(DesktopFileManagerTest, WithNothingThatOpensFoldersItIsAnError)
{
    hideOtherPrograms();
    EXPECT_EQ(failureOf(picture), FileManagerError::Case::NoFileManager);
}

TEST_F(DesktopFileManagerTest, WithoutABusTheFolderIsOpened)
{
    installOpener(QStringLiteral("xdg-open"));
    DesktopFileManager manager({}, QStringLiteral("unix:path=/nowhere/bus"));
    await(manager.reveal(picture));
    EXPECT_EQ(opened(), folder.file(QStringLiteral("图 片|")));
}

TEST_F(DesktopFileManagerTest, TheErrorNamesTheFileInASentence)
{
    const FileManagerError gone(FileManagerError::Case::NoSuchFile, QStringLiteral("/home/a/图.png"));
    EXPECT_EQ(gone.localizedDescription(), QStringLiteral("找不到文件“图.png”，它可能已被移动或删除。"));
}

} // namespace
} // namespace tessary
