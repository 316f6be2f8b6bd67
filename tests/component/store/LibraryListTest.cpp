#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/component/store/LibraryFixture.h"

namespace tessary {
namespace {

using testing::await;

class LibraryListTest : public testing::LibraryFixture {
protected:
    ScreenshotRecord picture(const QString& name, qint64 width, qint64 height, qint64 bytes = 1000)
    {
        ScreenshotRecord record = item(name);
        record.contentType = ClipboardContentType::Image;
        record.textContent.clear();
        record.pixelWidth = width;
        record.pixelHeight = height;
        record.fileSize = bytes;
        return record;
    }
    QStringList plan(const ListRequest& request)
    {
        Projection projection(projectionPath());
        const ListQuery query = listQuery(request);
        SQLiteStatement rows =
            projection.connection().query("EXPLAIN QUERY PLAN " + query.sql, query.bindings);
        QStringList lines;
        while (rows.nextRow())
            lines.append(rows.text(3));
        return lines;
    }
};

TEST_F(LibraryListTest, AnEmptyQueryListsEverythingOutsideTheTrashPinnedFirstNewestFirst)
{
    add(item(QStringLiteral("old"), 300));
    add(item(QStringLiteral("new"), 100));
    ScreenshotRecord pinned = item(QStringLiteral("pinned"), 9000);
    pinned.isPinned = true;
    add(pinned);
    ScreenshotRecord trashed = item(QStringLiteral("trashed"), 1);
    trashed.isDeleted = true;
    add(trashed);
    EXPECT_EQ(found(QString()), "pinned new old");
    EXPECT_EQ(found(QStringLiteral("  \u3000\n")), "pinned new old");
    EXPECT_EQ(listed(ScreenshotScope::All, ScreenshotSort::Relevance), "pinned new old");
    EXPECT_EQ(listed(ScreenshotScope::All, ScreenshotSort::Oldest), "pinned old new");
    for (const ScreenshotScope scope : kScreenshotScopes)
        EXPECT_EQ(listed(scope).find("trashed") != std::string::npos, scope == ScreenshotScope::Trash);
    EXPECT_EQ(listed(ScreenshotScope::Trash), "trashed");
}

TEST_F(LibraryListTest, RecentlyUsedPutsWhatWasNeverUsedLast)
{
    ScreenshotRecord first = item(QStringLiteral("usedFirst"), 100);
    first.lastUsedAt = Date{kNow - 50};
    ScreenshotRecord last = item(QStringLiteral("usedLast"), 5000);
    last.lastUsedAt = Date{kNow - 5};
    add(item(QStringLiteral("neverOld"), 800));
    add(first);
    add(last);
    add(item(QStringLiteral("neverNew"), 1));
    EXPECT_EQ(listed(ScreenshotScope::All, ScreenshotSort::RecentlyUsed),
              "usedLast usedFirst neverNew neverOld");
    EXPECT_EQ(listed(ScreenshotScope::RecentlyUsed, ScreenshotSort::RecentlyUsed), "usedLast usedFirst");
    EXPECT_EQ(listed(ScreenshotScope::RecentlyUsed), "usedFirst usedLast");
}

TEST_F(LibraryListTest, FileSizePutsTheLargestFirstAndEqualOnesByAge)
{
    add(picture(QStringLiteral("small"), 1, 1, 10));
    ScreenshotRecord older = picture(QStringLiteral("older"), 1, 1, 20);
    older.capturedAt = Date{kNow - 5000};
    add(older);
    add(picture(QStringLiteral("newer"), 1, 1, 20));
    EXPECT_EQ(listed(ScreenshotScope::All, ScreenshotSort::FileSize), "newer older small");
}

TEST_F(LibraryListTest, ScopesOfTimeBeginWhereTheirDaysBegin)
{
    const double sinceMidnight = 19 * 3600 + 0.5;
    add(item(QStringLiteral("midnight"), sinceMidnight));
    add(item(QStringLiteral("yesterday"), sinceMidnight + 0.001));
    add(item(QStringLiteral("week"), 7 * 86400));
    add(item(QStringLiteral("beforeWeek"), 7 * 86400 + 0.001));
    add(item(QStringLiteral("month"), 30 * 86400));
    add(item(QStringLiteral("beforeMonth"), 30 * 86400 + 0.001));
    EXPECT_EQ(listed(ScreenshotScope::Today), "midnight");
    EXPECT_EQ(listed(ScreenshotScope::Last7Days), "midnight yesterday week");
    EXPECT_EQ(listed(ScreenshotScope::Last30Days), "midnight yesterday week beforeWeek month");
}

TEST_F(LibraryListTest, ASquareIsPortraitAndNoLandscape)
{
    add(picture(QStringLiteral("square"), 100, 100));
    EXPECT_EQ(listed(ScreenshotScope::Portrait), "square");
    EXPECT_EQ(listed(ScreenshotScope::Landscape), "");
}

TEST_F(LibraryListTest, LargeIsTwelveMillionPixelsOrTenMegabytes)
{
    add(picture(QStringLiteral("exact"), 4000, 3000));
    add(picture(QStringLiteral("below"), 3999, 3000, 10'485'759));
    add(picture(QStringLiteral("heavy"), 3999, 3001, 10'485'760));
    const std::string large = listed(ScreenshotScope::LargeImages, ScreenshotSort::FileSize);
    EXPECT_EQ(large, "heavy exact");
}

TEST_F(LibraryListTest, KindsAndFavouritesHaveTheirScopes)
{
    add(item(QStringLiteral("words")));
    ScreenshotRecord liked = picture(QStringLiteral("liked"), 2, 1);
    liked.isFavorite = true;
    add(liked);
    EXPECT_EQ(listed(ScreenshotScope::TextItems), "words");
    EXPECT_EQ(listed(ScreenshotScope::Images), "liked");
    EXPECT_EQ(listed(ScreenshotScope::Favorites), "liked");
    EXPECT_EQ(found(QStringLiteral("is:favorite")), "liked");
    EXPECT_EQ(found(QStringLiteral("is:favorite words")), "");
}

TEST_F(LibraryListTest, PagesJoinWithoutAGapOrARepeatEvenAmongEqualTimes)
{
    QSet<QString> names;
    for (int i = 0; i < 25; ++i) {
        const QString name = QStringLiteral("item%1").arg(i);
        add(item(name, 100));
        names.insert(name);
    }
    for (const ScreenshotSort sort : kScreenshotSorts) {
        QStringList seen;
        for (int offset = 0; offset < 30; offset += 7) {
            ListRequest page = request(QString(), ScreenshotScope::All, sort);
            page.limit = 7;
            page.offset = offset;
            const QList<ScreenshotRecord> records = await(store->search(page));
            EXPECT_EQ(records.size(), std::clamp<qsizetype>(25 - offset, 0, 7));
            for (const ScreenshotRecord& record : records)
                seen.append(record.filename);
        }
        EXPECT_EQ(seen.size(), 25);
        EXPECT_EQ(QSet<QString>(seen.begin(), seen.end()), names);
    }
}

TEST_F(LibraryListTest, LongContentsAreCutBetweenCharacters)
{
    const QString text = QStringLiteral("ab😀会") + QString(50'000, u'x');
    add(testing::textRecord(text));
    const auto contentCutTo = [this](qsizetype length) {
        ListRequest cut = request(QString());
        cut.maximumTextLength = length;
        return await(store->search(cut)).first().textContent;
    };
    EXPECT_EQ(contentCutTo(20'000), text.left(20'000));
    EXPECT_EQ(contentCutTo(5), QStringLiteral("ab😀会"));
    EXPECT_EQ(contentCutTo(4), QStringLiteral("ab😀"));
    EXPECT_EQ(contentCutTo(3), QStringLiteral("ab"));
    EXPECT_EQ(contentCutTo(0), QString());
    EXPECT_EQ(contentCutTo(60'000), text);
    EXPECT_EQ(await(store->search(request(QStringLiteral("xxx")))).first().textContent, text);
}

TEST_F(LibraryListTest, NoOrderOfNoScopeIsSortedAfterwardsExceptTheTrashs)
{
    for (const ScreenshotScope scope : kScreenshotScopes) {
        for (const ScreenshotSort sort : kScreenshotSorts) {
            const QString lines = plan(request(QString(), scope, sort)).join(u'\n');
            EXPECT_EQ(lines.contains(QStringLiteral("TEMP B-TREE")), scope == ScreenshotScope::Trash)
                << qPrintable(rawValue(scope) + u' ' + rawValue(sort) + u'\n' + lines);
            EXPECT_TRUE(lines.contains(QStringLiteral("INDEX list_"))) << qPrintable(lines);
        }
    }
}

TEST_F(LibraryListTest, ItemsSinceADateAreLookedUpByItAndNotGoneThrough)
{
    for (const ScreenshotScope scope :
         {ScreenshotScope::Today, ScreenshotScope::Last7Days, ScreenshotScope::Last30Days})
        EXPECT_TRUE(plan(request(QString(), scope)).first().contains(QStringLiteral("captured_at>?")));
    EXPECT_TRUE(
        plan(request(QStringLiteral("after:2024-04-30"), ScreenshotScope::All, ScreenshotSort::Oldest))
            .first()
            .contains(QStringLiteral("captured_at>?")));
}

TEST_F(LibraryListTest, AnOlderLibraryGainsWhatItsListsAreReadFrom)
{
    add(item(QStringLiteral("x")));
    store.reset();
    SQLiteConnection(projectionPath()).run("DROP INDEX list_newest; DROP TABLE sqlite_stat1");
    store = await(SQLiteStore::open(databasePath()));
    EXPECT_TRUE(plan(request(QString(), ScreenshotScope::Today))
                    .first()
                    .contains(QStringLiteral("INDEX list_newest")));
    EXPECT_EQ(found(QString()), "x");
}

TEST_F(LibraryListTest, AFailureIsATypedErrorWithoutAPage)
{
    add(item(QStringLiteral("x")));
    SQLiteConnection(projectionPath()).run("DROP TABLE screenshots_fts_v5");
    EXPECT_EQ(found(QString()), "x");
    try {
        (void)found(QStringLiteral("y"));
        FAIL() << "the full-text table is gone";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.which(), StoreError::Case::Prepare);
        EXPECT_TRUE(error.localizedDescription().startsWith(QStringLiteral("数据库查询失败：")));
    }
}

TEST_F(LibraryListTest, AStoppedSearchGivesNothingAndTouchesNoOther)
{
    add(item(QStringLiteral("x")));
    std::stop_source stopped;
    QCoro::Task<QList<ScreenshotRecord>> before = store->search(request(QString()));
    stopped.request_stop();
    QCoro::Task<QList<ScreenshotRecord>> given = store->search(request(QString()), stopped.get_token());
    QCoro::Task<QList<ScreenshotRecord>> after = store->search(request(QString()));
    EXPECT_EQ(await(std::move(before)).size(), 1);
    EXPECT_EQ(await(std::move(given)).size(), 0);
    EXPECT_EQ(await(std::move(after)).size(), 1);
    add(item(QStringLiteral("y")));
    EXPECT_EQ(found(QString()), "x y");
}

} // namespace
} // namespace tessary
