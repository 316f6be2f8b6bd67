#include "store/ScreenshotRecord.h"

#include "tests/support/RecordSamples.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

namespace tessary {
namespace {

TEST(ScreenshotRecordTest, SearchableTextKeepsTheSeparatorsOfAbsentParts)
{
    ScreenshotRecord record;
    record.textContent = QStringLiteral("text");
    record.filename = QStringLiteral("name");
    EXPECT_EQ(record.searchableText(), QStringLiteral("text    name"));
}

TEST(ScreenshotRecordTest, SearchableTextJoinsTheFivePartsInOrder)
{
    ScreenshotRecord record;
    record.textContent = QStringLiteral("a");
    record.sourceAppName = QStringLiteral("b");
    record.tags = {QStringLiteral("c"), QStringLiteral("d")};
    record.note = QStringLiteral("e");
    record.filename = QStringLiteral("f");
    EXPECT_EQ(record.searchableText(), QStringLiteral("a b c d e f"));
}

TEST(ScreenshotRecordTest, NumbersOutsideTheEnumerationsNameNoCase)
{
    EXPECT_EQ(ocrStatus(4), OCRStatus::Paused);
    EXPECT_EQ(ocrStatus(5), std::nullopt);
    EXPECT_EQ(ocrStatus(7), std::nullopt);
    EXPECT_EQ(ocrStatus(-1), std::nullopt);
    EXPECT_EQ(clipboardContentType(1), ClipboardContentType::Text);
    EXPECT_EQ(clipboardContentType(2), std::nullopt);
    EXPECT_EQ(clipboardContentType(-1), std::nullopt);
}

TEST(ScreenshotRecordTest, RecordsThatDifferOnlyInTheirLastUseAreUnequal)
{
    const ScreenshotRecord record = testing::fullRecord();
    ScreenshotRecord other = record;
    EXPECT_EQ(record, other);
    other.lastUsedAt = record.lastUsedAt->addingSeconds(1);
    EXPECT_NE(record, other);
    other.lastUsedAt.reset();
    EXPECT_NE(record, other);
}

TEST(ScreenshotRecordTest, EqualRecordsHashEqualAndEachPropertyCounts)
{
    const ScreenshotRecord record = testing::fullRecord();
    EXPECT_EQ(qHash(record), qHash(ScreenshotRecord(record)));
    ScreenshotRecord other = record;
    other.isPinned = false;
    std::unordered_set<ScreenshotRecord> set{record, other, record};
    EXPECT_EQ(set.size(), 2u);
    EXPECT_NE(qHash(record), qHash(other));
}

TEST(ScreenshotRecordTest, CodingUsesThePropertyNamesAndLosesNothing)
{
    const ScreenshotRecord record = testing::fullRecord();
    const QJsonObject object = encodeRecord(record);
    EXPECT_EQ(object.size(), 28);
    EXPECT_EQ(object.value(QStringLiteral("sourceBundleIdentifier")), QStringLiteral("org.gnome.TextEditor"));
    EXPECT_EQ(decodeRecord(object), record);
}

TEST(ScreenshotRecordTest, CodingLeavesAbsentValuesOut)
{
    const ScreenshotRecord record = testing::textRecord(QStringLiteral("x"));
    const QJsonObject object = encodeRecord(record);
    EXPECT_FALSE(object.contains(QStringLiteral("lastUsedAt")));
    EXPECT_EQ(decodeRecord(object), record);
}

TEST(ScreenshotRecordTest, DecodingRefusesMissingKeysAndWrongKinds)
{
    for (const QString& key : encodeRecord(testing::textRecord(QStringLiteral("x"))).keys()) {
        if (key == QStringLiteral("generatedTitle"))
            continue;
        QJsonObject object = encodeRecord(testing::textRecord(QStringLiteral("x")));
        object.remove(key);
        EXPECT_EQ(decodeRecord(object), std::nullopt) << qPrintable(key);
        object.insert(key, QJsonObject{});
        EXPECT_EQ(decodeRecord(object), std::nullopt) << qPrintable(key);
    }
}

} // namespace
} // namespace tessary
