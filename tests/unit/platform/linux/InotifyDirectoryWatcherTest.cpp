#include "platform/linux/InotifyDirectoryWatcher.h"

#include "base/ExpendableLane.h"
#include "base/FileError.h"
#include "tests/support/Await.h"
#include "tests/support/HungFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

#include <sys/mount.h>
#include <sys/stat.h>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::writeFile;

class InotifyDirectoryWatcherTest : public ::testing::Test {
protected:
    DirectoryWatchRequest request(const QString& path)
    {
        DirectoryWatchRequest request;
        request.folder = path;
        request.concerns = [](const QByteArray& name) { return !name.startsWith("other"); };
        request.changed = [this](DirectoryChange change) {
            ++calls;
            last = change;
        };
        request.stop = stop.get_token();
        return request;
    }
    std::unique_ptr<DirectoryWatch> open() { return open(folder.path()); }
    std::unique_ptr<DirectoryWatch> open(const QString& path) { return await(watcher.watch(request(path))); }
    bool isTold(DirectoryChange change = DirectoryChange::Entries)
    {
        const bool came = eventually([&] { return calls >= 1 && last == change; });
        calls = 0;
        return came;
    }
    QString makeInner() const
    {
        EXPECT_TRUE(QDir().mkpath(folder.file(QStringLiteral("inner"))));
        return folder.file(QStringLiteral("inner"));
    }

    testing::TemporaryFolder folder;
    InotifyDirectoryWatcher watcher;
    std::stop_source stop;
    int calls = 0;
    std::optional<DirectoryChange> last;
};

TEST_F(InotifyDirectoryWatcherTest, TellsOfEntriesAddedRenamedAndRemoved)
{
    const auto watch = open();
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(isTold());
    ASSERT_TRUE(QFile::rename(folder.file(QStringLiteral("a")), folder.file(QStringLiteral("b"))));
    EXPECT_TRUE(isTold());
    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("b"))));
    EXPECT_TRUE(isTold());
}

TEST_F(InotifyDirectoryWatcherTest, ChangesOfNoConcernAreNotTold)
{
    const auto watch = open();
    writeFile(folder.file(QStringLiteral("other 1")), "1");
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(isTold());
    for (int i = 0; i < 2000; ++i)
        writeFile(folder.file(QStringLiteral("other %1").arg(i)), "x");
    writeFile(folder.file(QStringLiteral("b")), "1");
    EXPECT_TRUE(isTold());
    EXPECT_FALSE(eventually([this] { return calls > 0; }, 200ms));
}

TEST_F(InotifyDirectoryWatcherTest, TellsABurstOnce)
{
    const auto watch = open();
    for (int i = 0; i < 200; ++i)
        writeFile(folder.file(QString::number(i)), "x");
    EXPECT_TRUE(eventually([this] { return calls >= 1; }));
    writeFile(folder.file(QStringLiteral("last")), "x");
    EXPECT_TRUE(eventually([this] { return calls >= 2; }));
    EXPECT_LE(calls, 3);
}

TEST_F(InotifyDirectoryWatcherTest, TwoWatchesOfOneFolderAreIndependent)
{
    auto first = open();
    const auto second = open();
    EXPECT_EQ(first->identity(), second->identity());
    first.reset();
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(isTold());
}

TEST_F(InotifyDirectoryWatcherTest, AWatchMayEndItselfWhenCalled)
{
    std::unique_ptr<DirectoryWatch> watch;
    DirectoryWatchRequest ending = request(folder.path());
    ending.changed = [&](DirectoryChange) {
        ++calls;
        watch.reset();
    };
    watch = await(watcher.watch(ending));
    writeFile(folder.file(QStringLiteral("a")), "1");
    EXPECT_TRUE(eventually([this] { return calls == 1; }));
}

TEST_F(InotifyDirectoryWatcherTest, TellsWhenTheFolderIsRemovedOrMovedAway)
{
    const QString inner = makeInner();
    auto watch = open(inner);
    ASSERT_TRUE(QDir(inner).removeRecursively());
    EXPECT_TRUE(isTold(DirectoryChange::FolderGone));
    watch = open(makeInner());
    ASSERT_TRUE(QDir().rename(inner, folder.file(QStringLiteral("moved"))));
    EXPECT_TRUE(isTold(DirectoryChange::FolderGone));
}

TEST_F(InotifyDirectoryWatcherTest, TellsWhenTheFolderIsUnmountedAndDoesNotPreventThat)
{
    const QByteArray inner = QFile::encodeName(makeInner());
    if (::mount("none", inner.constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "file systems cannot be mounted here: " << std::strerror(errno);
    const auto watch = open(QFile::decodeName(inner));
    EXPECT_EQ(::umount(inner.constData()), 0) << std::strerror(errno);
    EXPECT_TRUE(isTold(DirectoryChange::FolderGone));
}

TEST_F(InotifyDirectoryWatcherTest, AFolderThatCannotBeWatchedIsAnError)
{
    try {
        (void)open(folder.file(QStringLiteral("missing")));
        FAIL() << "watched nothing";
    } catch (const FileError& error) {
        EXPECT_EQ(error.which(), FileError::Case::ReadNoSuchFile);
    }
    writeFile(folder.file(QStringLiteral("file")), "x");
    EXPECT_THROW((void)open(folder.file(QStringLiteral("file"))), FileError);
}

TEST_F(InotifyDirectoryWatcherTest, OpeningAFolderThatHangsCanBeGivenUp)
{
    const QString inner = makeInner();
    const testing::HungFolder hung(inner);
    if (!hung.isHanging())
        GTEST_SKIP() << "no file system that hangs can be mounted here: " << qPrintable(hung.reason());
    auto opening = watcher.watch(request(inner));
    EXPECT_FALSE(eventually([&] { return opening.isReady(); }, 200ms));
    stop.request_stop();
    EXPECT_THROW(await(std::move(opening)), Abandoned);
}

} // namespace
} // namespace tessary
