#include "tests/component/app/StorageFixture.h"

#include "base/AllocatedSize.h"
#include "store/FileImageCache.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::pictureRecord;
using testing::textRecord;
using Kind = LibraryChange::Kind;

class ClearAllDataTest : public testing::StorageFixture {
protected:
    void expectEmpty()
    {
        EXPECT_TRUE(left().isEmpty());
        EXPECT_TRUE(CoreDataScreenshotStore(paths.database).allRecords().isEmpty());
        EXPECT_EQ(itemFiles(), QStringList());
        EXPECT_EQ(strayFiles(), QStringList());
    }
    /// Runs the event loop for that many rounds, with the sleepers woken in every one.
    void turn(int rounds)
    {
        for (int i = 0; i < rounds; ++i) {
            letTimePass();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 2);
        }
    }
    /// Lets an import run for a while, clears the library in the middle of it, and lets it end.
    void clearInTheMiddleOf(QCoro::Task<ScreenshotImporter::Record> importing, int rounds)
    {
        turn(rounds);
        QCoro::Task<> clearing = storage.clearAllData();
        EXPECT_EQ(run(std::move(importing)), std::nullopt) << "after " << rounds << " rounds";
        await(std::move(clearing));
        settle();
        expectEmpty();
    }
    static int sweep() { return 40; } ///< Rounds after which every import here has ended.
};

TEST_F(ClearAllDataTest, LeavesAnEmptyLibrary)
{
    workspace.activate({QStringLiteral("editor"), QStringLiteral("editor"), std::nullopt, 1, 7});
    ASSERT_TRUE(eventually([&] { return QFile::exists(logPath()); }));
    addPictures(250, 100);
    addTrashed(1, clock.now());
    writeTo(paths.root + QStringLiteral("/剪贴板图片 2026-03-05 09.07.03.png"), "left by an earlier run");
    ASSERT_TRUE(QDir(paths.originals).mkpath(QStringLiteral(".folder/within")));
    ASSERT_TRUE(QFile::link(folder.path(), paths.thumbnails + QStringLiteral("/link")));
    await(storage.clearAllData());
    settle();
    EXPECT_EQ(storage.storageBytes(), allocatedSize(paths.root));
    expectEmpty();
    EXPECT_TRUE(QDir(paths.originals).isEmpty());
    EXPECT_TRUE(QDir(paths.root).exists()) << "a link leads out of the library";
    EXPECT_FALSE(QFile::exists(logPath()));
    EXPECT_TRUE(tracker->samples().isEmpty());
    EXPECT_EQ(changes, QList{Kind::Cleared});
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ClearAllDataTest, TheLibraryTakesItemsAfterwards)
{
    importText(QStringLiteral("same"));
    await(storage.clearAllData());
    EXPECT_TRUE(importText(QStringLiteral("same")));
    EXPECT_EQ(left().size(), 1);
}

TEST_F(ClearAllDataTest, ImagesInMemoryAreForgotten)
{
    FileImageCache& cache = FileImageCache::shared();
    cache.setSources(&codec, {});
    await(cache.image(write(QStringLiteral("picture.png"), "picture"), 10));
    ASSERT_EQ(cache.count(), 1);
    await(storage.clearAllData());
    EXPECT_EQ(cache.count(), 0);
    cache.setSources(nullptr, {});
}

TEST_F(ClearAllDataTest, WhatIsAboutToBeWrittenToTheHistoryDoesNotBringItBack)
{
    for (int i = 0; i < 300; ++i) {
        clock.advance(1s);
        workspace.activate({QString::number(i), QString::number(i), std::nullopt, 1, 7});
    }
    ASSERT_TRUE(eventually([&] { return tracker->samples().size() >= 300; }));
    await(tracker->erase());
    EXPECT_FALSE(QFile::exists(logPath()));
    workspace.activate({QStringLiteral("next"), QStringLiteral("next"), std::nullopt, 1, 7});
    EXPECT_TRUE(eventually([&] { return QFile::exists(logPath()); })) << "what comes later is kept";
}

TEST_F(ClearAllDataTest, ATextThatIsBeingImportedDoesNotComeBack)
{
    icons.add(*editor.bundleURL, Qt::blue);
    for (int rounds = 0; rounds < sweep(); ++rounds)
        clearInTheMiddleOf(
            importer.importClipboardPayload(ClipboardPayload(QStringLiteral("text %1").arg(rounds)), editor),
            rounds);
    EXPECT_TRUE(failures.isEmpty()) << qPrintable(failures.join(u' '));
}

TEST_F(ClearAllDataTest, ACopiedPictureThatIsBeingImportedDoesNotComeBack)
{
    icons.add(*editor.bundleURL, Qt::blue);
    for (int rounds = 0; rounds < sweep(); ++rounds)
        clearInTheMiddleOf(
            importer.importClipboardPayload(ClipboardPayload("picture" + QByteArray::number(rounds)), editor),
            rounds);
    EXPECT_TRUE(failures.isEmpty()) << qPrintable(failures.join(u' '));
}

TEST_F(ClearAllDataTest, AScreenshotThatIsBeingImportedDoesNotComeBack)
{
    icons.add(*editor.bundleURL, Qt::blue);
    const QString path = write(QStringLiteral("Screenshot.png"), "screenshot");
    for (int rounds = 0; rounds < sweep(); ++rounds)
        clearInTheMiddleOf(importer.importFile(path, editor, CountDuplicate::Yes), rounds);
    EXPECT_TRUE(failures.isEmpty()) << qPrintable(failures.join(u' '));
    EXPECT_TRUE(QFile::exists(path)) << "the person's own file";
}

TEST_F(ClearAllDataTest, AnImportWhoseDecoderAnswersLateLeavesNothing)
{
    codec.gate.close();
    auto importing = importer.importClipboardPayload(ClipboardPayload(QByteArray("late")), std::nullopt);
    ASSERT_TRUE(eventually([&] {
        letTimePass();
        return codec.gate.waitingCount() > 0;
    }));
    await(storage.clearAllData());
    codec.pixelSizeFailure = ImageError::Case::NotAnImage;
    codec.gate.open();
    EXPECT_EQ(run(std::move(importing)), std::nullopt) << "nor is its failure of interest";
    expectEmpty();
}

TEST_F(ClearAllDataTest, WhatIsCopiedWhileItGoesOnIsKept)
{
    addPictures(50, 100);
    QCoro::Task<> clearing = storage.clearAllData();
    auto text = importer.importClipboardPayload(ClipboardPayload(QStringLiteral("new")), std::nullopt);
    auto picture = importer.importClipboardPayload(ClipboardPayload(QByteArray("new picture")), std::nullopt);
    await(std::move(clearing));
    EXPECT_TRUE(run(std::move(text)));
    const auto record = run(std::move(picture));
    ASSERT_TRUE(record);
    EXPECT_EQ(contents(record->libraryPath), "new picture");
    EXPECT_EQ(left().size(), 2);
    EXPECT_EQ(itemFiles().size(), 2) << "the picture and its thumbnail";
}

TEST_F(ClearAllDataTest, ARunningCleanupEndsWithoutAnError)
{
    addPictures(900, 100'000'000);
    limitTo(1);
    QCoro::Task<> cleanup = storage.enforceStorageLimit();
    ASSERT_TRUE(eventually([&] { return left().size() < 900; }));
    await(storage.clearAllData());
    await(std::move(cleanup));
    expectEmpty();
    EXPECT_TRUE(failures.isEmpty());
    EXPECT_TRUE(changes.contains(Kind::Cleared));
}

TEST_F(ClearAllDataTest, TwoAtOnceAreFine)
{
    add(pictureRecord(1, 100));
    QCoro::Task<> first = storage.clearAllData();
    await(storage.clearAllData());
    await(std::move(first));
    expectEmpty();
    EXPECT_TRUE(importText(QStringLiteral("taken again")));
}

TEST_F(ClearAllDataTest, AFileThatCannotBeRemovedIsToldAndTheRestIsGone)
{
    workspace.activate({QStringLiteral("editor"), QStringLiteral("editor"), std::nullopt, 1, 7});
    ASSERT_TRUE(eventually([&] { return QFile::exists(logPath()); }));
    const ScreenshotRecord picture = add(pictureRecord(1, 100));
    ASSERT_TRUE(QDir(paths.thumbnails).removeRecursively());
    ASSERT_TRUE(QFile::link(QStringLiteral("/proc/sys/kernel/random"), paths.thumbnails)); // nobody can
    await(storage.clearAllData());
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("无法清空数据：")));
    EXPECT_TRUE(left().isEmpty());
    EXPECT_FALSE(QFile::exists(picture.libraryPath));
    EXPECT_FALSE(QFile::exists(*picture.sourceAppIconPath));
    EXPECT_FALSE(QFile::exists(logPath()));
    EXPECT_EQ(changes, QList{Kind::Cleared});
    EXPECT_TRUE(importText(QStringLiteral("still recording")));
}

TEST_F(ClearAllDataTest, AStoreThatFailsHalfWayKeepsItemsAndFiles)
{
    add(pictureRecord(1, 100));
    add(pictureRecord(2, 100));
    refuseRemovalAt(2);
    await(storage.clearAllData());
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("无法清空数据：数据库操作失败：")));
    EXPECT_EQ(left().size(), 2);
    EXPECT_EQ(itemFiles().size(), 6);
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_TRUE(importText(QStringLiteral("still recording")));
}

} // namespace
} // namespace tessary
