#include "ui/quicksearch/ItemFacts.h"

#include "tests/support/RecordSamples.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

const Calendar kShanghai{QTimeZone(QByteArrayLiteral("Asia/Shanghai"))};

TEST(ItemFactsTest, APictureTellsItsFormatPixelsAndBytes)
{
    ScreenshotRecord record;
    record.fileType = QStringLiteral("png");
    record.pixelWidth = 2560;
    record.pixelHeight = 1440;
    record.fileSize = 412'300;
    record.capturedAt = Date{1'795'154'528.5};
    record.sourceAppName = QStringLiteral("Firefox");
    const ItemFacts facts = itemFacts(record, false, kShanghai);
    EXPECT_EQ(facts.kind, QStringLiteral("图片（PNG）"));
    EXPECT_EQ(facts.extent, QStringLiteral("2560 × 1440 · 412 KB"));
    EXPECT_EQ(facts.time, QStringLiteral("2026-11-20 14:02"));
    EXPECT_EQ(facts.source, QStringLiteral("Firefox"));
}

TEST(ItemFactsTest, ATextTellsItsCharactersNotItsCodeUnits)
{
    const ItemFacts facts = itemFacts(testing::textRecord(QStringLiteral("日本😀")), false, kShanghai);
    EXPECT_EQ(facts.kind, QStringLiteral("文字"));
    EXPECT_EQ(facts.extent, QStringLiteral("3 个字符 · 10 B"));
}

TEST(ItemFactsTest, ATextOfWhichThereIsMoreTellsOnlyItsBytes)
{
    ScreenshotRecord record = testing::textRecord(QStringLiteral("begin"));
    record.fileSize = 20'000'000;
    EXPECT_EQ(itemFacts(record, true, kShanghai).extent, QStringLiteral("20 MB"));
}

TEST(ItemFactsTest, AnUnknownSourceIsSaid)
{
    EXPECT_EQ(itemFacts(testing::textRecord(QStringLiteral("x")), false, kShanghai).source,
              QStringLiteral("未知"));
}

TEST(ByteCountTextTest, UnitsAreDecimalAndSmallAmountsHaveOneDigitMore)
{
    EXPECT_EQ(byteCountText(0), QStringLiteral("0 B"));
    EXPECT_EQ(byteCountText(99), QStringLiteral("99 B"));
    EXPECT_EQ(byteCountText(900), QStringLiteral("0.9 KB"));
    EXPECT_EQ(byteCountText(9'640'000), QStringLiteral("9.6 MB"));
    EXPECT_EQ(byteCountText(9'960), QStringLiteral("10 KB"));
    EXPECT_EQ(byteCountText(999'999), QStringLiteral("1.0 MB"));
    EXPECT_EQ(byteCountText(5'000'000'000), QStringLiteral("5.0 GB"));
    EXPECT_EQ(byteCountText(std::numeric_limits<qint64>::max()), QStringLiteral("9223372 TB"));
}

} // namespace
} // namespace tessary
