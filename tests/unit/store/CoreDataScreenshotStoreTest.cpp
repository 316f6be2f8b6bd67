#include "store/CoreDataScreenshotStore.h"

#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::fullRecord;
using testing::textRecord;

class CoreDataScreenshotStoreTest : public ::testing::Test {
protected:
    QString path() const { return m_folder.file(QStringLiteral("Tessary.sqlite3")); }
    CoreDataScreenshotStore& store() { return m_store; }
    void corrupt(const QByteArray& sql)
    {
        SQLiteConnection connection(path());
        connection.run(sql);
    }

private:
    testing::TemporaryFolder m_folder;
    CoreDataScreenshotStore m_store{path()};
};

TEST_F(CoreDataScreenshotStoreTest, KeepsEveryPropertyBitForBit)
{
    const ScreenshotRecord record = fullRecord();
    EXPECT_TRUE(store().insert(record));
    EXPECT_EQ(store().record(record.id), record);
    EXPECT_EQ(CoreDataScreenshotStore(path()).record(record.contentHash), record);
}

TEST_F(CoreDataScreenshotStoreTest, TakesTheSameContentOnlyOnce)
{
    const ScreenshotRecord first = textRecord(QStringLiteral("same"));
    const ScreenshotRecord second = textRecord(QStringLiteral("same"));
    EXPECT_TRUE(store().insert(first));
    EXPECT_FALSE(store().insert(second));
    EXPECT_EQ(store().allRecords(), QList{first});
    EXPECT_TRUE(store().contains(first.contentHash));
    EXPECT_EQ(store().identifier(first.contentHash), first.id);
    EXPECT_EQ(store().identifier(QStringLiteral("unknown")), std::nullopt);
    EXPECT_FALSE(store().containsRecord(second.id));
}

TEST_F(CoreDataScreenshotStoreTest, RemovingAnUnknownItemReturnsNothing)
{
    EXPECT_EQ(store().remove(QUuid::createUuid()), std::nullopt);
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    store().insert(record);
    EXPECT_EQ(store().remove(record.id), record);
    EXPECT_EQ(store().count(), 0);
}

TEST_F(CoreDataScreenshotStoreTest, NeverListsAnItemAsTrashedThatIsNot)
{
    ScreenshotRecord kept = textRecord(QStringLiteral("kept"));
    kept.deletedAt = Date{1};
    ScreenshotRecord trashed = textRecord(QStringLiteral("trashed"));
    trashed.isDeleted = true;
    trashed.deletedAt = Date{100};
    ScreenshotRecord recent = textRecord(QStringLiteral("recent"));
    recent.isDeleted = true;
    recent.deletedAt = Date{300};
    ScreenshotRecord undated = textRecord(QStringLiteral("undated"));
    undated.isDeleted = true;
    for (const ScreenshotRecord& record : {kept, trashed, recent, undated})
        store().insert(record);
    EXPECT_EQ(store().trashed(Date{200}), QList{trashed});
    EXPECT_TRUE(store().trashed(Date{100}).isEmpty());
}

TEST_F(CoreDataScreenshotStoreTest, UpsertReplacesByIdAndByContent)
{
    ScreenshotRecord record = textRecord(QStringLiteral("one"));
    store().upsert(record);
    record.note = QStringLiteral("changed");
    store().upsert(record);
    EXPECT_EQ(store().allRecords(), QList{record});
    ScreenshotRecord sameContent = record;
    sameContent.id = QUuid::createUuid();
    store().upsert(sameContent);
    EXPECT_EQ(store().allRecords(), QList{sameContent});
}

TEST_F(CoreDataScreenshotStoreTest, AMissingOrMistypedAttributeIsAnInvalidRecord)
{
    const ScreenshotRecord record = textRecord(QStringLiteral("x"));
    for (const QByteArray& damage :
         {QByteArray("capturedAt = 'soon'"), QByteArray("id = 'nobody'"), QByteArray("ocrStatus = 9"),
          QByteArray("contentType = 2"), QByteArray("textContent = x'00'")}) {
        store().upsert(record);
        corrupt("UPDATE ScreenshotEntity SET " + damage);
        try {
            (void)store().allRecords();
            ADD_FAILURE() << damage.constData();
        } catch (const PersistenceError& error) {
            EXPECT_EQ(error.which(), PersistenceError::Case::InvalidRecord);
            EXPECT_EQ(error.localizedDescription(), QStringLiteral("Core Data 中的截图记录无效"));
        }
        corrupt("DELETE FROM ScreenshotEntity");
    }
}

TEST_F(CoreDataScreenshotStoreTest, TagsThatAreAbsentOrNotJsonAreNoTags)
{
    ScreenshotRecord record = fullRecord();
    store().insert(record);
    record.tags.clear();
    corrupt("UPDATE ScreenshotEntity SET tagsData = NULL");
    EXPECT_EQ(store().record(record.id), record);
    corrupt("UPDATE ScreenshotEntity SET tagsData = x'ff'");
    EXPECT_EQ(store().record(record.id), record);
}

TEST_F(CoreDataScreenshotStoreTest, RefusesAFileOfALaterVersion)
{
    corrupt("PRAGMA user_version = 99");
    EXPECT_THROW(CoreDataScreenshotStore{path()}, PersistenceError);
}

TEST_F(CoreDataScreenshotStoreTest, AdoptsWhatItCanInOneGo)
{
    QList<ScreenshotRecord> coming{textRecord(QStringLiteral("a")), textRecord(QStringLiteral("a")),
                                   textRecord(QStringLiteral("b"))};
    store().adopt([&]() -> std::optional<ScreenshotRecord> {
        return coming.isEmpty() ? std::nullopt : std::optional(coming.takeFirst());
    });
    EXPECT_EQ(store().count(), 2);
}

TEST_F(CoreDataScreenshotStoreTest, TextMayHoldAnyCharacter)
{
    const ScreenshotRecord record =
        textRecord(QStringLiteral("a\0b \U0001F600 \u200f'\"%_").prepend(QChar(0)));
    store().insert(record);
    EXPECT_EQ(store().record(record.id), record);
}

} // namespace
} // namespace tessary
