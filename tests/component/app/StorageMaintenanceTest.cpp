#include "tests/component/app/StorageFixture.h"

#include "base/AllocatedSize.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::pictureRecord;
using testing::textRecord;
using Kind = LibraryChange::Kind;
using Trash = StorageMaintenance::Trash;

constexpr qint64 kMega = 1'000'000;

class StorageMaintenanceTest : public testing::StorageFixture {};

TEST_F(StorageMaintenanceTest, WithoutTheSwitchOrWithoutALimitNothingIsCleanedUp)
{
    const ScreenshotRecord huge = add(pictureRecord(1, 900'000 * kMega));
    settings.setMaxStorageGB(1);
    await(storage.enforceStorageLimit());
    limitTo(0);
    await(storage.enforceStorageLimit());
    limitTo(-3);
    await(storage.enforceStorageLimit());
    EXPECT_EQ(left(), QList{huge.id});
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(StorageMaintenanceTest, TheOldestPicturesGoOneByOneUntilTheRestIsWithinTheLimit)
{
    const QList<ScreenshotRecord> pictures = addPictures(12, 100 * kMega);
    limitTo(1);
    await(storage.enforceStorageLimit());
    settle();
    ASSERT_EQ(left().size(), 10) << "exactly 1,000,000,000 bytes";
    EXPECT_EQ(left().first(), pictures.at(2).id);
    EXPECT_EQ(itemFiles().size(), 30);
    EXPECT_FALSE(QFile::exists(pictures.at(0).libraryPath));
    EXPECT_FALSE(QFile::exists(*pictures.at(1).thumbnailPath));
    EXPECT_FALSE(QFile::exists(*pictures.at(1).sourceAppIconPath));
    EXPECT_EQ(changes, QList{Kind::Removed});
    EXPECT_EQ(storage.storageBytes(), allocatedSize(paths.root)) << "measured anew";
}

TEST_F(StorageMaintenanceTest, WithinTheLimitNothingIsToldAndNothingMeasured)
{
    add(pictureRecord(1, 1000 * kMega));
    limitTo(1);
    await(storage.enforceStorageLimit());
    settle();
    EXPECT_EQ(left().size(), 1);
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(storage.storageBytes(), 0);
}

TEST_F(StorageMaintenanceTest, FavouritesPinnedItemsAndTextsStayHoweverOldTheyAre)
{
    ScreenshotRecord favorite = pictureRecord(1, 600 * kMega);
    favorite.isFavorite = true;
    ScreenshotRecord pinned = pictureRecord(2, 600 * kMega);
    pinned.isPinned = true;
    ScreenshotRecord text = textRecord(QStringLiteral("text"), 3);
    text.fileSize = 600 * kMega;
    const QList<QUuid> kept{add(favorite).id, add(pinned).id, add(text).id};
    add(pictureRecord(4, 1));
    limitTo(1);
    await(storage.enforceStorageLimit());
    EXPECT_EQ(left(), kept) << "although they are above the limit";
    EXPECT_EQ(changes, QList{Kind::Removed});
    await(storage.enforceStorageLimit());
    EXPECT_EQ(changes.size(), 1) << "nothing was left to remove";
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(StorageMaintenanceTest, WhatIsInTheTrashNeitherCountsNorGoes)
{
    const ScreenshotRecord trashed = add(pictureRecord(1, 5000 * kMega));
    await(store->moveToTrash(trashed.id, clock.now()));
    add(pictureRecord(2, 900 * kMega));
    limitTo(1);
    await(storage.enforceStorageLimit());
    EXPECT_EQ(left().size(), 2);
}

TEST_F(StorageMaintenanceTest, AFileOutsideTheLibrarysFoldersIsNotOursToRemove)
{
    const QString outside = write(QStringLiteral("holiday.png"), "mine");
    ScreenshotRecord picture = pictureRecord(1, 2000 * kMega);
    picture.libraryPath = outside;
    picture.thumbnailPath = paths.thumbnails + QStringLiteral("/../../holiday.png");
    picture.sourceAppIconPath = paths.database;
    ASSERT_TRUE(await(store->insert(picture)));
    limitTo(1);
    await(storage.enforceStorageLimit());
    EXPECT_TRUE(left().isEmpty());
    EXPECT_TRUE(QFile::exists(outside));
    EXPECT_TRUE(QFile::exists(paths.database));
}

TEST_F(StorageMaintenanceTest, AFailureIsToldAndWhatIsGoneStaysGone)
{
    addPictures(405, 100 * kMega);
    refuseRemovalAt(300);
    limitTo(1);
    await(storage.enforceStorageLimit());
    EXPECT_EQ(left().size(), 205);
    EXPECT_EQ(itemFiles().size(), 615);
    EXPECT_EQ(changes, QList{Kind::Removed});
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("自动清理失败：数据库操作失败：")));
}

TEST_F(StorageMaintenanceTest, TwoCleanupsAtOnceAreOne)
{
    addPictures(300, 10 * kMega);
    limitTo(1);
    storage.fileImported();
    QCoro::Task<> first = storage.enforceStorageLimit();
    QCoro::Task<> second = storage.enforceStorageLimit();
    await(std::move(second));
    await(std::move(first));
    EXPECT_EQ(left().size(), 100);
    EXPECT_EQ(itemFiles().size(), 300);
    EXPECT_EQ(changes, QList{Kind::Removed});
}

TEST_F(StorageMaintenanceTest, AnImportedFileLeadsToACleanupAndAMeasurement)
{
    limitTo(1);
    await(storage.enforceStorageLimit());
    const ScreenshotRecord old = add(pictureRecord(1, 900 * kMega));
    const ScreenshotRecord fresh = add(pictureRecord(2, 900 * kMega));
    for (int i = 0; i < 200; ++i)
        storage.fileImported();
    EXPECT_TRUE(eventually([&] {
        clock.advance(1s);
        return left() == QList{fresh.id} && storage.storageBytes() == allocatedSize(paths.root);
    }));
    EXPECT_EQ(changes, QList{Kind::Removed});
}

TEST_F(StorageMaintenanceTest, TheLastOfManyImportsIsMeasured)
{
    storage.clipboardImported();
    for (int i = 0; i < 50; ++i) {
        writeTo(paths.originals + u'/' + QString::number(i), QByteArray(50'000, 'x'));
        storage.clipboardImported();
    }
    EXPECT_TRUE(eventually([&] {
        clock.advance(1s);
        return flows.isEmpty() && storage.storageBytes() == allocatedSize(paths.root);
    }));
    EXPECT_GE(storage.storageBytes(), 2'500'000);
}

TEST_F(StorageMaintenanceTest, AStopTakesEffectBetweenTwoPieces)
{
    addPictures(1050, 100 * kMega);
    limitTo(1);
    QCoro::Task<> cleanup = storage.enforceStorageLimit();
    ASSERT_TRUE(eventually([&] { return left().size() < 1050; }));
    flows.cancel();
    await(std::move(cleanup));
    EXPECT_GT(left().size(), 10) << "which it would have come to";
    EXPECT_EQ(itemFiles().size(), left().size() * 3) << "their files went with them";
}

TEST_F(StorageMaintenanceTest, FilesWhoseItemsAnEarlierRunRemovedAreRemovedAtTheStart)
{
    const QList<ScreenshotRecord> pictures = addPictures(3, kMega);
    for (const ScreenshotRecord& removed : pictures.first(2))
        ASSERT_TRUE(CoreDataScreenshotStore(paths.database).remove(removed.id));
    writeTo(paths.originals + QStringLiteral("/note.txt"), "not ours");
    await(storage.finishRemovals());
    EXPECT_EQ(itemFiles().size(), 10) << "nobody was removing anything";
    writeTo(paths.root + QStringLiteral("/.removing"), {});
    await(storage.finishRemovals());
    EXPECT_EQ(itemFiles().size(), 4);
    EXPECT_TRUE(QFile::exists(pictures.at(2).libraryPath));
    EXPECT_TRUE(strayFiles().isEmpty()) << "the note is gone";
}

TEST_F(StorageMaintenanceTest, ARemovalIsNotedForAsLongAsItGoesOn)
{
    const QString note = paths.root + QStringLiteral("/.removing");
    addPictures(450, 100 * kMega);
    limitTo(1);
    QCoro::Task<> cleanup = storage.enforceStorageLimit();
    EXPECT_TRUE(eventually([&] { return left().size() < 450; }));
    EXPECT_TRUE(QFile::exists(note));
    await(std::move(cleanup));
    EXPECT_FALSE(QFile::exists(note));
}

// --- the trash --------------------------------------------------------------

TEST_F(StorageMaintenanceTest, ARetentionOfOnePurgesWhatWasDeletedMoreThanOneCalendarDayAgo)
{
    settings.setTrashRetentionDays(1);
    const Date yesterday = Calendar::current().addingDays(clock.now(), -1);
    const ScreenshotRecord gone = addTrashed(QStringLiteral("gone"), yesterday.addingSeconds(-1));
    const ScreenshotRecord kept = addTrashed(QStringLiteral("kept"), yesterday);
    const ScreenshotRecord recent = addTrashed(QStringLiteral("recent"), clock.now());
    await(storage.purgeExpiredTrash());
    EXPECT_EQ(left().size(), 2);
    EXPECT_FALSE(left().contains(gone.id));
    EXPECT_FALSE(QFile::exists(*gone.sourceAppIconPath));
    EXPECT_TRUE(QFile::exists(*kept.sourceAppIconPath));
    EXPECT_EQ(changes, QList{Kind::Removed});
    await(storage.purgeExpiredTrash());
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(StorageMaintenanceTest, ThePurgeOfEverythingTellsHowMuchThatWas)
{
    addTrashed(401, clock.now());
    add(textRecord(QStringLiteral("kept")));
    EXPECT_EQ(await(storage.purgeTrash(Trash::Expired)), 0);
    EXPECT_EQ(await(storage.purgeTrash(Trash::Everything)), 401);
    EXPECT_EQ(await(storage.purgeTrash(Trash::Everything)), 0);
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(itemFiles().size(), 1);
}

TEST_F(StorageMaintenanceTest, TwoPurgesAtOnceCountEachItemOnce)
{
    addTrashed(500, clock.now());
    QCoro::Task<qint64> first = storage.purgeTrash(Trash::Everything);
    QCoro::Task<qint64> second = storage.purgeTrash(Trash::Everything);
    const qint64 ofSecond = await(std::move(second));
    EXPECT_EQ(await(std::move(first)) + ofSecond, 500);
    EXPECT_TRUE(left().isEmpty());
}

TEST_F(StorageMaintenanceTest, APurgeThatFailsIsToldAtStartUpAndThrownWhenAskedFor)
{
    addTrashed(QStringLiteral("old"), Date{1});
    refuseRemovalAt(textRecord({}).capturedAt.secondsSince1970);
    await(storage.purgeExpiredTrash());
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("自动清理失败：")));
    EXPECT_THROW(await(storage.purgeTrash(Trash::Everything)), Error);
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(itemFiles().size(), 1);
    EXPECT_TRUE(changes.isEmpty());
}

// --- measuring --------------------------------------------------------------

TEST_F(StorageMaintenanceTest, TheUsageIsToldWhenItIsAnother)
{
    int told = 0;
    QObject::connect(&storage, &StorageMaintenance::storageBytesChanged, &storage, [&] { ++told; });
    storage.refreshStorageUsage();
    settle();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(storage.storageBytes(), allocatedSize(paths.root));
    storage.refreshStorageUsage();
    settle();
    EXPECT_EQ(told, 1);
    QFile hole(paths.originals + QStringLiteral("/hole"));
    ASSERT_TRUE(hole.open(QIODevice::WriteOnly) && hole.resize(10'000'000'000));
    storage.refreshStorageUsage();
    settle();
    EXPECT_LT(storage.storageBytes(), 10'000'000);
}

TEST_F(StorageMaintenanceTest, MeasuresTheLibraryPartByPart)
{
    writeTo(paths.originals + QStringLiteral("/a"), QByteArray(300'000, 'x'));
    writeTo(paths.thumbnails + QStringLiteral("/a"), QByteArray(200'000, 'x'));
    writeTo(paths.appIcons + QStringLiteral("/a"), QByteArray(100'000, 'x'));
    ASSERT_TRUE(await(store->insert(textRecord(QStringLiteral("one")))));
    ASSERT_TRUE(await(store->insert(textRecord(QStringLiteral("two")))));
    ASSERT_TRUE(await(store->insert(pictureRecord(1, 10))));
    const ScreenshotRecord trashed = pictureRecord(2, 10);
    ASSERT_TRUE(await(store->insert(trashed)));
    await(store->moveToTrash(trashed.id, clock.now()));
    settings.setMaxStorageGB(5);
    const StorageUsage usage = await(storage.measureUsage());
    EXPECT_EQ(usage.items, (LibraryCounts{1, 2, 1}));
    EXPECT_EQ(usage.limitBytes, 5'000'000'000);
    EXPECT_GE(usage.originalBytes, 300'000);
    EXPECT_GE(usage.thumbnailBytes, 200'000);
    EXPECT_GE(usage.iconBytes, 100'000);
    EXPECT_LT(usage.iconBytes, 200'000);
    EXPECT_GE(usage.databaseBytes, 8192);
    EXPECT_EQ(usage.rootBytes, allocatedSize(paths.root));
    EXPECT_LE(usage.originalBytes + usage.thumbnailBytes + usage.iconBytes + usage.databaseBytes,
              usage.rootBytes);
}

TEST_F(StorageMaintenanceTest, WithoutALibraryNothingHappens)
{
    StorageMaintenance nothing(settings, clock, files, flows);
    limitTo(1);
    await(nothing.purgeExpiredTrash());
    await(nothing.enforceStorageLimit());
    await(nothing.clearAllData());
    nothing.refreshStorageUsage();
    EXPECT_EQ(await(nothing.purgeTrash(Trash::Everything)), 0);
    EXPECT_EQ(await(nothing.measureUsage()).rootBytes, 0);
    settle();
    EXPECT_EQ(nothing.storageBytes(), 0);
}

} // namespace
} // namespace tessary
