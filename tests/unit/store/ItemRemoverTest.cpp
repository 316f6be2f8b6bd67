#include "store/ItemRemover.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

using testing::pictureRecord;
using testing::textRecord;

class ItemRemoverTest : public ::testing::Test {
protected:
    void add(const ScreenshotRecord& record)
    {
        ASSERT_TRUE(records.insert(record));
        ASSERT_TRUE(projection.insertProjection(record));
        projection.updateSearchIndex(record);
    }
    QList<QUuid> left()
    {
        QList<QUuid> ids;
        for (const ScreenshotRecord& record : records.allRecords())
            ids.append(record.id);
        EXPECT_EQ(projection.rowCount(), ids.size());
        EXPECT_EQ(projection.searchRowCount(), ids.size());
        return ids;
    }
    static QList<QUuid> idsOf(const RemovedItems& removed)
    {
        QList<QUuid> ids;
        for (const RemovedItem& item : removed.items)
            ids.append(item.id);
        return ids;
    }
    QString recordsPath() const { return m_folder.file(QStringLiteral("records")); }
    QString projectionPath() const { return m_folder.file(QStringLiteral("projection")); }

private:
    testing::TemporaryFolder m_folder;

protected:
    CoreDataScreenshotStore records{recordsPath()};
    Projection projection{projectionPath()};
    ItemRemover remover{records};
};

TEST_F(ItemRemoverTest, RemovesTheOldestPicturesUntilTheRestIsWithinTheLimit)
{
    const ScreenshotRecord newest = pictureRecord(400, 30);
    const ScreenshotRecord oldest = pictureRecord(100, 10);
    const ScreenshotRecord middle = pictureRecord(200, 40);
    const ScreenshotRecord newer = pictureRecord(300, 30);
    for (const ScreenshotRecord& record : {newest, oldest, middle, newer})
        add(record);
    const RemovedItems removed = remover.removeOldestPictures(projection, 99, 10);
    EXPECT_EQ(idsOf(removed), (QList{oldest.id, middle.id}));
    EXPECT_TRUE(removed.isComplete);
    EXPECT_EQ(left(), (QList{newest.id, newer.id}));
    EXPECT_TRUE(remover.removeOldestPictures(projection, 60, 10).items.isEmpty());
}

TEST_F(ItemRemoverTest, PicturesOfOneTimeGoInTheOrderInWhichTheyWereStored)
{
    QList<QUuid> ids;
    for (int i = 0; i < 5; ++i) {
        const ScreenshotRecord record = pictureRecord(100, 10);
        ids.append(record.id);
        add(record);
    }
    EXPECT_EQ(idsOf(remover.removeOldestPictures(projection, 20, 10)), ids.first(3));
}

TEST_F(ItemRemoverTest, KeepsFavouritesPinnedItemsTextsAndWhatIsInTheTrash)
{
    ScreenshotRecord favorite = pictureRecord(1, 50);
    favorite.isFavorite = true;
    ScreenshotRecord pinned = pictureRecord(2, 50);
    pinned.isPinned = true;
    ScreenshotRecord trashed = pictureRecord(3, 5000);
    trashed.isDeleted = true;
    trashed.deletedAt = Date{4};
    ScreenshotRecord text = textRecord(QStringLiteral("text"), 5);
    text.fileSize = 50;
    const ScreenshotRecord plain = pictureRecord(6, 50);
    for (const ScreenshotRecord& record : {favorite, pinned, trashed, text, plain})
        add(record);
    EXPECT_TRUE(remover.removeOldestPictures(projection, 200, 10).items.isEmpty());
    const RemovedItems removed = remover.removeOldestPictures(projection, 10, 10);
    EXPECT_EQ(idsOf(removed), QList{plain.id});
    EXPECT_TRUE(removed.isComplete) << "although the rest is above the limit";
    EXPECT_EQ(left(), (QList{favorite.id, pinned.id, trashed.id, text.id}));
}

TEST_F(ItemRemoverTest, ANegativeSizeCountsAsNone)
{
    add(pictureRecord(1, -1'000'000));
    add(pictureRecord(2, 60));
    add(pictureRecord(3, 60));
    EXPECT_EQ(remover.removeOldestPictures(projection, 100, 10).items.size(), 2);
    EXPECT_EQ(left().size(), 1);
}

TEST_F(ItemRemoverTest, GoesOnPieceByPieceUntilItIsDone)
{
    for (int i = 0; i < 25; ++i)
        add(pictureRecord(i, 10));
    RemovedItems piece = remover.removeOldestPictures(projection, 45, 10);
    EXPECT_EQ(piece.items.size(), 10);
    EXPECT_FALSE(piece.isComplete);
    piece = remover.removeOldestPictures(projection, 45, 10);
    EXPECT_EQ(piece.items.size(), 10);
    EXPECT_FALSE(piece.isComplete);
    piece = remover.removeOldestPictures(projection, 45, 10);
    EXPECT_EQ(piece.items.size(), 1);
    EXPECT_TRUE(piece.isComplete);
    EXPECT_EQ(left().size(), 4);
}

TEST_F(ItemRemoverTest, WhatChangesBetweenTwoPiecesCounts)
{
    QList<ScreenshotRecord> pictures;
    for (int i = 0; i < 4; ++i) {
        pictures.append(pictureRecord(i, 10));
        add(pictures.last());
    }
    EXPECT_EQ(remover.removeOldestPictures(projection, 10, 1).items.size(), 1);
    pictures[1].isPinned = true; // by a person, meanwhile
    records.upsert(pictures[1]);
    pictures[3].isDeleted = true;
    records.upsert(pictures[3]);
    const RemovedItems removed = remover.removeOldestPictures(projection, 10, 10);
    EXPECT_EQ(idsOf(removed), QList{pictures[2].id}) << "the pinned one takes what the limit allows";
}

TEST_F(ItemRemoverTest, TellsTheFilesOfWhatItRemoved)
{
    ScreenshotRecord picture = pictureRecord(1, 10);
    picture.libraryPath = QStringLiteral("/o/") + identifierText(picture.id) + QStringLiteral(".png");
    picture.thumbnailPath = QStringLiteral("/t/") + identifierText(picture.id) + QStringLiteral(".jpg");
    picture.sourceAppIconPath = QStringLiteral("/i/") + identifierText(picture.id) + QStringLiteral(".png");
    picture.isDeleted = true;
    add(picture);
    ScreenshotRecord text = textRecord(QStringLiteral("text"));
    text.isDeleted = true;
    add(text);
    const RemovedItems removed = remover.removeTrash(projection, std::nullopt, 10);
    ASSERT_EQ(removed.items.size(), 2);
    EXPECT_EQ(removed.items.at(0).files,
              (QStringList{picture.libraryPath, *picture.thumbnailPath, *picture.sourceAppIconPath}));
    EXPECT_TRUE(removed.items.at(1).files.isEmpty());
}

TEST_F(ItemRemoverTest, AFileThatAnotherItemRefersToIsNotAmongThem)
{
    ScreenshotRecord owner = pictureRecord(1, 10);
    owner.sourceAppIconPath = QStringLiteral("/i/") + identifierText(owner.id) + QStringLiteral(".png");
    owner.thumbnailPath = QStringLiteral("/t/") + identifierText(owner.id) + QStringLiteral(".jpg");
    ScreenshotRecord guest = pictureRecord(2, 10);
    guest.sourceAppIconPath = owner.sourceAppIconPath;
    add(owner);
    add(guest);
    ASSERT_EQ(remover.removeOldestPictures(projection, 10, 10).items.first().files,
              QStringList{*owner.thumbnailPath});
    ScreenshotRecord second = pictureRecord(3, 10);
    second.sourceAppIconPath = guest.sourceAppIconPath;
    add(second);
    EXPECT_TRUE(remover.removeOldestPictures(projection, 10, 10).items.first().files.isEmpty());
    EXPECT_EQ(remover.removeOldestPictures(projection, 0, 10).items.first().files,
              QStringList{*owner.sourceAppIconPath})
        << "the last one takes it along";
}

TEST_F(ItemRemoverTest, TrashGoesByItsDateOrAltogether)
{
    QList<QUuid> ids;
    for (int day = 1; day <= 3; ++day) {
        ScreenshotRecord record = textRecord(QString::number(day));
        record.isDeleted = true;
        record.deletedAt = Date{day * 100.0};
        ids.append(record.id);
        add(record);
    }
    ScreenshotRecord undated = textRecord(QStringLiteral("undated"));
    undated.isDeleted = true;
    add(undated);
    add(textRecord(QStringLiteral("kept")));
    EXPECT_EQ(idsOf(remover.removeTrash(projection, Date{200}, 10)), QList{ids[0]});
    const RemovedItems piece = remover.removeTrash(projection, std::nullopt, 2);
    EXPECT_EQ(piece.items.size(), 2);
    EXPECT_FALSE(piece.isComplete);
    EXPECT_EQ(remover.removeTrash(projection, std::nullopt, 2).items.size(), 1);
    EXPECT_EQ(left().size(), 1);
}

TEST_F(ItemRemoverTest, APieceThatFailsChangesNothing)
{
    add(pictureRecord(1, 10));
    add(pictureRecord(2, 10));
    SQLiteConnection(projectionPath())
        .run("CREATE TRIGGER refusal BEFORE DELETE ON screenshots WHEN old.captured_at = 2 "
             "BEGIN SELECT raise(ABORT, 'no'); END");
    EXPECT_THROW(remover.removeOldestPictures(projection, 0, 10), StoreError);
    EXPECT_THROW(remover.removeEverything(projection), StoreError);
    EXPECT_EQ(left().size(), 2);
}

TEST_F(ItemRemoverTest, AfterRemovingEverythingNothingOfItIsInTheFiles)
{
    const QString secret = QStringLiteral("zebra-crossing-4711");
    for (int i = 0; i < 50; ++i)
        add(textRecord(secret + QString::number(i) + QString(5000, u'x')));
    remover.removeEverything(projection);
    EXPECT_TRUE(left().isEmpty());
    for (const QString& path : {recordsPath(), projectionPath(), recordsPath() + QStringLiteral("-wal"),
                                projectionPath() + QStringLiteral("-wal")}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_FALSE(bytes.contains("zebra")) << qPrintable(path);
        EXPECT_LT(bytes.size(), 300'000) << qPrintable(path);
    }
    add(textRecord(QStringLiteral("afterwards")));
    EXPECT_EQ(left().size(), 1);
}

} // namespace
} // namespace tessary
