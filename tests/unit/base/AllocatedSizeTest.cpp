#include "base/AllocatedSize.h"

#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

class AllocatedSizeTest : public ::testing::Test {
protected:
    QString write(const QString& name, qsizetype size)
    {
        const QString path = m_folder.file(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(QByteArray(size, 'x')), size);
        EXPECT_TRUE(file.flush());
        EXPECT_EQ(::fsync(file.handle()), 0); // or it may have no blocks yet
        return path;
    }
    static qint64 blocksOf(const QString& path)
    {
        struct stat status {};
        EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_blocks * 512;
    }
    QString root() const { return m_folder.path(); }

private:
    testing::TemporaryFolder m_folder;
};

TEST_F(AllocatedSizeTest, IsTheSumOfTheBlocksOfAllFilesBelow)
{
    const qint64 expected = blocksOf(write(QStringLiteral("a"), 100'000)) +
                            blocksOf(write(QStringLiteral("b/c/d"), 1)) +
                            blocksOf(write(QStringLiteral("b/.hidden"), 5000));
    EXPECT_GE(expected, 105'001);
    EXPECT_EQ(allocatedSize(root()), expected);
}

TEST_F(AllocatedSizeTest, HolesTakeNothing)
{
    const QString path = write(QStringLiteral("sparse"), 0);
    ASSERT_TRUE(QFile::resize(path, 5'000'000'000));
    EXPECT_LT(allocatedSize(root()), 1'000'000);
}

TEST_F(AllocatedSizeTest, AFileWithTwoNamesCountsOnce)
{
    const QString path = write(QStringLiteral("one"), 100'000);
    ASSERT_EQ(::link(QFile::encodeName(path).constData(),
                     QFile::encodeName(root() + QStringLiteral("/two")).constData()),
              0);
    EXPECT_EQ(allocatedSize(root()), blocksOf(path));
}

TEST_F(AllocatedSizeTest, LinksAreNotFollowedAndPipesAreNotRead)
{
    const QString outside = write(QStringLiteral("outside/big"), 1'000'000);
    const qint64 expected = blocksOf(write(QStringLiteral("folder/file"), 10));
    const QString folder = root() + QStringLiteral("/folder");
    ASSERT_TRUE(QFile::link(outside, folder + QStringLiteral("/link")));
    ASSERT_TRUE(QFile::link(root(), folder + QStringLiteral("/loop")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder + QStringLiteral("/pipe")).constData(), 0600), 0);
    EXPECT_EQ(allocatedSize(folder), expected);
}

TEST_F(AllocatedSizeTest, TheFolderItselfMayBeALink)
{
    const qint64 expected = blocksOf(write(QStringLiteral("folder/file"), 10'000));
    const QString link = root() + QStringLiteral("/link");
    ASSERT_TRUE(QFile::link(root() + QStringLiteral("/folder"), link));
    EXPECT_EQ(allocatedSize(link), expected);
}

TEST_F(AllocatedSizeTest, NamesMayBeAnyBytes)
{
    write(QStringLiteral("first"), 10'000);
    const QByteArray folder = QFile::encodeName(root()) + "/\xff\xfe\n";
    ASSERT_EQ(::mkdir(folder.constData(), 0700), 0);
    ASSERT_EQ(::rename(QFile::encodeName(root() + QStringLiteral("/first")).constData(),
                       (folder + "/\x01").constData()),
              0);
    EXPECT_GE(allocatedSize(root()), 10'000);
}

TEST_F(AllocatedSizeTest, AFolderThatIsNotThereTakesNothing)
{
    EXPECT_EQ(allocatedSize(root() + QStringLiteral("/none")), 0);
    EXPECT_EQ(allocatedSizeOfFiles(root() + QStringLiteral("/none"), QStringLiteral("x")), 0);
}

TEST_F(AllocatedSizeTest, OnlyFilesWithThePrefixCountWhereThereIsOne)
{
    const qint64 expected =
        blocksOf(write(QStringLiteral("Name.a"), 10)) + blocksOf(write(QStringLiteral("Name.b"), 9000));
    write(QStringLiteral("Other"), 10'000);
    write(QStringLiteral("Name.folder/file"), 10'000);
    EXPECT_EQ(allocatedSizeOfFiles(root(), QStringLiteral("Name.")), expected);
}

TEST_F(AllocatedSizeTest, StopsWhenAskedTo)
{
    for (int i = 0; i < 600; ++i)
        write(QString::number(i), 10);
    std::stop_source source;
    source.request_stop();
    EXPECT_EQ(allocatedSize(root(), source.get_token()), 0);
}

} // namespace
} // namespace tessary
