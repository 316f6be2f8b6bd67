#include "store/search/PageSearch.h"

#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::textRecord;
using Way = PageSearch::Way;

constexpr qint64 kAll = 1000;
constexpr double kFirst = 1'700'000'000;

/// Thirty items, the newest first in the list: every third is even common, and the oldest one rare.
class PageSearchTest : public ::testing::Test {
protected:
    explicit PageSearchTest(const SearchLimits& limits = smallLimits()) : projection(path, limits)
    {
        add(QStringLiteral("稀少 rare"));
        for (int i = 1; i < kItems; ++i)
            add((i % 3 == 0 ? QStringLiteral("third %1") : QStringLiteral("text %1")).arg(i));
    }
    static SearchLimits smallLimits()
    {
        SearchLimits limits;
        limits.rowsBetweenLooks = 4;
        limits.mostTested = 8;
        limits.rowsPerTested = 1;
        limits.mostSorted = 5;
        return limits;
    }
    ScreenshotRecord add(const QString& text)
    {
        const ScreenshotRecord record = textRecord(text, kFirst + static_cast<double>(added++));
        projection.insertProjection(record);
        projection.updateSearchIndex(record);
        return record;
    }
    /// The same page, expected to be the prescribed one.
    QList<ScreenshotRecord> page(const QString& query, int limit = 5)
    {
        ListRequest request;
        request.rawQuery = query;
        request.limit = limit;
        const QList<ScreenshotRecord> found = projection.page(request, {});
        way = projection.wayOfPage();
        EXPECT_EQ(found, projection.prescribedPage(request, {}));
        return found;
    }

    static constexpr int kItems = 30;
    testing::TemporaryFolder folder;
    QString path{folder.file(QStringLiteral("Tessary.metadata.sqlite3"))};
    Projection projection;
    int added = 0;
    Way way = Way::Prescribed;
};

TEST_F(PageSearchTest, WhatIsCommonIsMetRowByRow)
{
    EXPECT_EQ(page(QStringLiteral("t")).size(), 5);
    EXPECT_EQ(way, Way::Tested);
}

TEST_F(PageSearchTest, WhatIsRareIsNamedByTheIndexAndSorted)
{
    projection.indexGrams(kAll);
    EXPECT_EQ(page(QStringLiteral("稀少")).size(), 1);
    EXPECT_EQ(way, Way::Sorted);
}

TEST_F(PageSearchTest, WhatIsNeitherIsMetAmongManyCandidates)
{
    projection.indexGrams(kAll);
    EXPECT_EQ(page(QStringLiteral("third"), 7).size(), 7);
    EXPECT_EQ(way, Way::Met);
}

TEST_F(PageSearchTest, ADeepPageIsMetWithoutTestingWhatComesBefore)
{
    projection.indexGrams(kAll);
    ListRequest request;
    request.rawQuery = QStringLiteral("thi");
    request.offset = 8;
    EXPECT_EQ(projection.page(request, {}), projection.prescribedPage(request, {}));
    (void)projection.page(request, {});
    EXPECT_EQ(projection.wayOfPage(), Way::Met);
}

TEST_F(PageSearchTest, WhatARowHeldBeforeAnEditIsNotFound)
{
    ScreenshotRecord record = add(QStringLiteral("edited"));
    const auto setNote = [&](const QString& note) {
        record.note = note;
        projection.update("note = ?", {note}, record.id);
        projection.updateSearchIndex(record);
    };
    setNote(QStringLiteral("xyz"));
    projection.indexGrams(kAll);
    setNote(QStringLiteral("nothing"));
    EXPECT_EQ(page(QStringLiteral("xyz")).size(), 0);
    setNote(QStringLiteral("xyz"));
    EXPECT_EQ(page(QStringLiteral("xyz")).size(), 1);
}

TEST_F(PageSearchTest, RowsThatAreNotIndexedYetAreCandidates)
{
    projection.indexGrams(kAll);
    add(QStringLiteral("罕见"));
    for (int i = 0; i < kItems; ++i)
        add(QStringLiteral("filler %1").arg(i));
    EXPECT_EQ(page(QStringLiteral("罕见")).size(), 1);
    EXPECT_EQ(way, Way::Met);
}

TEST_F(PageSearchTest, ALetterThatIsRareIsLeftToTheQueryItself)
{
    add(QStringLiteral("z"));
    for (int i = 0; i < kItems; ++i)
        add(QStringLiteral("filler %1").arg(i));
    projection.indexGrams(kAll);
    EXPECT_EQ(page(QStringLiteral("z")).size(), 1);
    EXPECT_EQ(way, Way::Prescribed);
}

TEST_F(PageSearchTest, ListsWithoutTextsAreTheQueryItself)
{
    EXPECT_EQ(page(QString()).size(), 5);
    EXPECT_EQ(way, Way::Prescribed);
    EXPECT_EQ(page(QStringLiteral("t"), 0).size(), 0);
    EXPECT_EQ(page(QStringLiteral("t"), -1).size(), kItems - 1);
    EXPECT_EQ(way, Way::Prescribed);
}

TEST_F(PageSearchTest, AnApplicationIsFoundByIndex)
{
    ScreenshotRecord record = textRecord(QStringLiteral("from elsewhere"), kFirst - 1);
    record.sourceAppName = QStringLiteral("文本编辑器");
    projection.insertProjection(record);
    projection.updateSearchIndex(record);
    projection.indexGrams(kAll);
    EXPECT_EQ(page(QStringLiteral("app:编辑")).size(), 1);
    EXPECT_EQ(way, Way::Sorted);
    EXPECT_EQ(page(QStringLiteral("app:nobody")).size(), 0);
}

TEST_F(PageSearchTest, AFewDaysInAnotherOrderAreSorted)
{
    ListRequest request;
    request.sort = ScreenshotSort::FileSize;
    request.scope = ScreenshotScope::Today;
    request.calendar = Calendar{QTimeZone::utc()};
    request.now = Date{kFirst + 40};
    for (const int days : {0, 20}) {
        request.now = Date{kFirst + days * 86400.0 + 40};
        const QList<ScreenshotRecord> found = projection.page(request, {});
        EXPECT_EQ(projection.wayOfPage(), days == 0 ? Way::Prescribed : Way::Sorted);
        EXPECT_EQ(found, projection.prescribedPage(request, {}));
    }
}

TEST_F(PageSearchTest, ATagIsFoundByIndexAndNoTagsAreNot)
{
    ScreenshotRecord record = textRecord(QStringLiteral("tagged"), kFirst - 1);
    record.tags = {QStringLiteral("工作")};
    projection.insertProjection(record);
    projection.updateSearchIndex(record);
    projection.indexGrams(kAll);
    EXPECT_EQ(page(QStringLiteral("tag:工")).size(), 1);
    EXPECT_EQ(way, Way::Sorted);
    EXPECT_EQ(page(QStringLiteral("tag:["), 100).size(), kItems + 1);
}

TEST_F(PageSearchTest, RowIdsOutOfTheOrdinaryAreLeftToTheQueryItself)
{
    projection.indexGrams(kAll);
    projection.connection().run("UPDATE screenshots SET rowid = 4000000000000 WHERE rowid = 7");
    projection.connection().run("UPDATE screenshots SET rowid = -3 WHERE rowid = 8");
    EXPECT_EQ(page(QStringLiteral("third"), 9).size(), 9);
    EXPECT_EQ(way, Way::Prescribed);
}

TEST_F(PageSearchTest, AStoppedSearchEndsWithAnError)
{
    projection.indexGrams(kAll);
    std::stop_source stop;
    stop.request_stop();
    ListRequest request;
    request.rawQuery = QStringLiteral("third");
    EXPECT_THROW((void)projection.page(request, stop.get_token()), StoreError);
    EXPECT_EQ(page(QStringLiteral("third")).size(), 5);
}

class LongTailTest : public PageSearchTest {
protected:
    LongTailTest() : PageSearchTest(limits()) {}
    static SearchLimits limits()
    {
        SearchLimits limits = smallLimits();
        limits.mostUnindexed = 3;
        return limits;
    }
};

TEST_F(LongTailTest, AnIndexThatIsBeingMadeIsNotAsked)
{
    EXPECT_EQ(page(QStringLiteral("稀少")).size(), 1);
    EXPECT_EQ(way, Way::Prescribed);
    while (projection.indexGrams(10)) {
    }
    EXPECT_EQ(page(QStringLiteral("稀少")).size(), 1);
    EXPECT_EQ(way, Way::Sorted);
}

} // namespace
} // namespace tessary
