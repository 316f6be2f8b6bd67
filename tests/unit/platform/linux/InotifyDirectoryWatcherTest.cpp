#include "platform/linux/InotifyDirectoryWatcher.h"

#include "base/FileError.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary {
namespace {

using testing::eventually;
using testing::writeFile;

class InotifyDirectoryWatcherTest : public ::testing::Test {
protected:
    testing::TemporaryFolder folder;
    InotifyDirectoryWatcher watcher;
    int calls = 0;
};

TEST_F(InotifyDirectoryWatcherTest, TellsOfEntriesAddedRenamedAndRemoved)
{
    const auto watch = watcher.watch(folder.path(), [this] { ++calls; });
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
    calls = 0;
    ASSERT_TRUE(QFile::rename(folder.file(QStringLiteral("a")), folder.file(QStringLiteral("b"))));
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
    calls = 0;
    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("b"))));
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
}

TEST_F(InotifyDirectoryWatcherTest, TellsABurstOnce)
{
    const auto watch = watcher.watch(folder.path(), [this] { ++calls; });
    for (int i = 0; i < 200; ++i)
        writeFile(folder.file(QString::number(i)), "x");
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
    writeFile(folder.file(QStringLiteral("last")), "x");
    EXPECT_TRUE(eventually([this] { return calls >= 2; }));
    EXPECT_LE(calls, 3);
}

TEST_F(InotifyDirectoryWatcherTest, TwoWatchesOfOneFolderAreIndependent)
{
    int others = 0;
    auto first = watcher.watch(folder.path(), [this] { ++calls; });
    const auto second = watcher.watch(folder.path(), [&] { ++others; });
    first.reset();
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(eventually([&] { return others == 1; }));
    EXPECT_EQ(calls, 0);
}

TEST_F(InotifyDirectoryWatcherTest, AWatchMayEndItselfWhenCalled)
{
    std::unique_ptr<DirectoryWatch> watch;
    watch = watcher.watch(folder.path(), [&] {
        ++calls;
        watch.reset();
    });
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(eventually([this] { return calls == 1; }));
}

TEST_F(InotifyDirectoryWatcherTest, TellsWhenTheFolderItselfGoes)
{
    const QString inner = folder.file(QStringLiteral("inner"));
    ASSERT_TRUE(QDir().mkpath(inner));
    const auto watch = watcher.watch(inner, [this] { ++calls; });
    ASSERT_TRUE(QDir(inner).removeRecursively());
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
}

TEST_F(InotifyDirectoryWatcherTest, AFolderThatCannotBeWatchedIsAnError)
{
    try {
        (void)watcher.watch(folder.file(QStringLiteral("missing")), [] {});
        FAIL() << "watched nothing";
    } catch (const FileError& error) {
        EXPECT_EQ(error.which(), FileError::Case::ReadNoSuchFile);
    }
    writeFile(folder.file(QStringLiteral("file")), "x");
    EXPECT_THROW((void)watcher.watch(folder.file(QStringLiteral("file")), [] {}), FileError);
}

} // namespace
} // namespace tessary
