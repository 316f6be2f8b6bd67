#include "store/AppPaths.h"

#include "base/FileError.h"
#include "platform/StandardFolders.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace tessary {
namespace {

mode_t modeOf(const QString& path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

class HomelessFolders : public StandardFolders {
public:
    [[nodiscard]] QString applicationSupport() const override
    {
        throw FileError(FileError::Case::WriteNoPermission, QStringLiteral("/"));
    }
    [[nodiscard]] QString desktop() const override { return {}; }
};

class FoldersAt : public StandardFolders {
public:
    explicit FoldersAt(QString path) : m_path(std::move(path)) {}
    [[nodiscard]] QString applicationSupport() const override { return m_path; }
    [[nodiscard]] QString desktop() const override { return {}; }

private:
    QString m_path;
};

TEST(AppPathsTest, MakesPrivateFoldersAndNamesTheDatabase)
{
    const testing::TemporaryFolder folder;
    const AppPaths paths = AppPaths::live(FoldersAt(folder.file(QStringLiteral("share/deep"))));
    EXPECT_EQ(paths.root, folder.file(QStringLiteral("share/deep/Tessary")));
    EXPECT_EQ(paths.originals, paths.root + QStringLiteral("/Originals"));
    EXPECT_EQ(paths.thumbnails, paths.root + QStringLiteral("/Thumbnails"));
    EXPECT_EQ(paths.appIcons, paths.root + QStringLiteral("/App Icons"));
    EXPECT_EQ(paths.database, paths.root + QStringLiteral("/Tessary.sqlite3"));
    for (const QString& made : {paths.root, paths.originals, paths.thumbnails, paths.appIcons})
        EXPECT_EQ(modeOf(made), 0700u) << qPrintable(made);
}

TEST(AppPathsTest, TakesExistingFoldersAndClosesTheRootToOthers)
{
    const testing::TemporaryFolder folder;
    const QString root = folder.file(QStringLiteral("Tessary"));
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/Originals")));
    ASSERT_EQ(::chmod(QFile::encodeName(root).constData(), 0755), 0);
    EXPECT_EQ(AppPaths::create(root), AppPaths::create(root));
    EXPECT_EQ(modeOf(root), 0700u);
}

TEST(AppPathsTest, StopsAtTheFirstFolderThatCannotBeMade)
{
    const testing::TemporaryFolder folder;
    const QString root = folder.file(QStringLiteral("Tessary"));
    ASSERT_TRUE(QDir().mkpath(root));
    QFile blocker(root + QStringLiteral("/Thumbnails"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    EXPECT_THROW((void)AppPaths::create(root), FileError);
    EXPECT_TRUE(QDir(root + QStringLiteral("/Originals")).exists());
    EXPECT_FALSE(QDir(root + QStringLiteral("/App Icons")).exists());
}

TEST(AppPathsTest, HandsOnTheErrorOfAPersonWithoutAHome)
{
    EXPECT_THROW((void)AppPaths::live(HomelessFolders()), FileError);
}

} // namespace
} // namespace tessary
