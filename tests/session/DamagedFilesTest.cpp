#include "tests/session/SessionTest.h"
#include "tests/session/SmallDisk.h"
#include "tests/session/TestPictures.h"

#include <QDir>

namespace tessary::testing {

namespace {

QByteArray garbage()
{
    return QByteArray("\x01\x02garbage\xff\xfe\n[[[{{{ not what it should be").repeated(200);
}

class DamagedFilesTest : public SessionTest {
protected:
    /// It said what is wrong with its database, and lives on.
    void expectDatabaseError()
    {
        const auto said = [this] {
            const QString output = tessary().output();
            return output.contains(QStringLiteral("数据库操作失败：")) ||
                   output.contains(QStringLiteral("无法打开数据库：")) ||
                   output.contains(QStringLiteral("数据库查询失败："));
        };
        EXPECT_TRUE(eventually([&] { return said() || !tessary().isRunning(); }));
        EXPECT_TRUE(said()) << qPrintable(tessary().output());
        EXPECT_TRUE(tessary().isRunning());
    }

    /// Nothing can be kept, but the program is there, says why, and goes when asked.
    void expectAliveWithoutLibrary()
    {
        launch();
        EXPECT_TRUE(tessary().printed(root()))
            << "no word about the folder: " << qPrintable(tessary().output());
        EXPECT_TRUE(tessary().isRunning());
    }

    void TearDown() override
    {
        SessionTest::TearDown();
        m_disk.reset();
    }

    std::optional<SmallDisk> m_disk{std::in_place};
};

TEST_F(DamagedFilesTest, GarbageInTheSettingsIsKeptAside)
{
    writeFile(settingsPath(), garbage());
    start();
    EXPECT_EQ(readFile(settingsPath() + QStringLiteral(".bad")), garbage());
    EXPECT_TRUE(keepsCopying());
}

TEST_F(DamagedFilesTest, GarbageInTheLogOfApplicationsCostsTheLogOnly)
{
    writeFile(root() + QStringLiteral("/FrontmostApps.json"), garbage());
    start();
    EXPECT_TRUE(keepsCopying());
}

TEST_F(DamagedFilesTest, GarbageInsteadOfTheProjectionIsToldAndSurvived)
{
    writeFile(root() + QStringLiteral("/Tessary.metadata.sqlite3"), garbage());
    launch();
    expectDatabaseError();
}

TEST_F(DamagedFilesTest, GarbageInsteadOfTheStoreOfRecordIsToldAndLeftAlone)
{
    const QString path = root() + QStringLiteral("/Tessary.sqlite3");
    writeFile(path, garbage());
    launch();
    expectDatabaseError();
    quit();
    EXPECT_EQ(readFile(path), garbage());
}

TEST_F(DamagedFilesTest, AFileInTheWayOfTheLibraryIsSurvived)
{
    writeFile(root(), "in the way");
    expectAliveWithoutLibrary();
}

TEST_F(DamagedFilesTest, AReadOnlyFolderForTheLibraryIsSurvived)
{
    const QString data = scratch(QStringLiteral("data"));
    if (::geteuid() == 0) { // permissions do not bind root; a read-only file system does
        if (!m_disk->mount(data, "size=1m,ro"))
            GTEST_SKIP() << "may not mount here";
    } else {
        ASSERT_TRUE(QFile::setPermissions(data, QFile::ReadOwner | QFile::ExeOwner));
    }
    expectAliveWithoutLibrary();
    QFile::setPermissions(data, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(DamagedFilesTest, AFullDiskCostsWhatDoesNotFitAndNothingElse)
{
    if (!m_disk->mount(scratch(QStringLiteral("data")), "size=3m"))
        GTEST_SKIP() << "a small disk takes root and the right to mount";
    start();
    ASSERT_TRUE(keepsCopying());
    const QString large = scratch(QStringLiteral("large.png"));
    writeFile(large, pngOf(picture(1200, 900)) + QByteArray(4'000'000, 'x'));
    copyPng(large);
    EXPECT_TRUE(tessary().printed(QStringLiteral("无法记录剪贴板："))) << qPrintable(tessary().output());
    EXPECT_TRUE(keepsCopying());
    EXPECT_EQ(library().recordIds(), library().projectionIds());
    EXPECT_TRUE(QDir(root()).entryList({QStringLiteral("*.png")}, QDir::Files).isEmpty());
    EXPECT_TRUE(holds(2));
}

} // namespace

} // namespace tessary::testing
