#include "platform/linux/XdgFolders.h"

#include "base/FileError.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/ScopedEnvironment.h"
#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary {
namespace {

using testing::writeFile;

class XdgFoldersTest : public ::testing::Test {
protected:
    XdgFoldersTest()
    {
        environment.set("HOME", folder.path());
        for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS"})
            environment.unset(name);
    }
    void userDirectories(const QByteArray& lines)
    {
        writeFile(folder.file(QStringLiteral(".config/user-dirs.dirs")), lines);
    }

    testing::TemporaryFolder folder;
    testing::ScopedEnvironment environment;
    XdgFolders folders;
};

TEST_F(XdgFoldersTest, DataLiesAtHomeUnlessToldOtherwise)
{
    EXPECT_EQ(folders.applicationSupport(), folder.file(QStringLiteral(".local/share")));
    environment.set("XDG_DATA_HOME", QStringLiteral("/elsewhere/share/"));
    EXPECT_EQ(folders.applicationSupport(), QStringLiteral("/elsewhere/share"));
}

TEST_F(XdgFoldersTest, RelativeValuesAreIgnored)
{
    environment.set("XDG_DATA_HOME", QStringLiteral("relative/share"));
    EXPECT_EQ(folders.applicationSupport(), folder.file(QStringLiteral(".local/share")));
    environment.set("XDG_DATA_DIRS", QStringLiteral("relative:/usr/share:"));
    EXPECT_EQ(folders.dataFolders(),
              (QStringList{folder.file(QStringLiteral(".local/share")), QStringLiteral("/usr/share")}));
}

TEST_F(XdgFoldersTest, WithoutHomeTheUserDatabaseIsAsked)
{
    environment.unset("HOME");
    EXPECT_TRUE(QFileInfo(folders.home()).isDir());
}

TEST_F(XdgFoldersTest, AHomeThatIsNotThereYetIsNamedAllTheSame)
{
    environment.set("HOME", folder.file(QStringLiteral("nobody")));
    EXPECT_EQ(folders.applicationSupport(), folder.file(QStringLiteral("nobody/.local/share")));
    EXPECT_EQ(folders.desktop(), folder.file(QStringLiteral("nobody/Desktop")));
}

TEST_F(XdgFoldersTest, TheDesktopIsWhereTheUserDirectoriesSay)
{
    userDirectories("# comment\nXDG_DESKTOP_DIR=\"$HOME/桌面 \\\"1\\\"\"\nXDG_PICTURES_DIR=\"/pics/\"\n");
    EXPECT_EQ(folders.desktop(), folder.file(QStringLiteral("桌面 \"1\"")));
    EXPECT_EQ(folders.pictures(), QStringLiteral("/pics"));
}

TEST_F(XdgFoldersTest, TheDesktopIsSwitchedOffByNamingTheHomeFolder)
{
    userDirectories("XDG_DESKTOP_DIR=\"$HOME/\"\n");
    EXPECT_EQ(folders.desktop(), QString());
}

TEST_F(XdgFoldersTest, WithoutAWordTheUsualDesktopCounts)
{
    EXPECT_EQ(folders.desktop(), folder.file(QStringLiteral("Desktop")));
}

TEST_F(XdgFoldersTest, GarbageInTheUserDirectoriesIsNoDesktop)
{
    userDirectories("XDG_DESKTOP_DIR=relative/path\n\xff\xfe\n=\n");
    EXPECT_EQ(folders.desktop(), QString());
}

} // namespace
} // namespace tessary
