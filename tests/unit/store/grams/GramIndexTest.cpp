#include "store/grams/GramIndex.h"

#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::textRecord;

constexpr qint64 kAll = 1000;

class GramIndexTest : public ::testing::Test {
protected:
    ScreenshotRecord add(const QString& text)
    {
        const ScreenshotRecord record = textRecord(text);
        projection->insertProjection(record);
        projection->updateSearchIndex(record);
        return record;
    }
    void setNote(ScreenshotRecord record, const QString& note)
    {
        record.note = note;
        projection->update("note = ?", {note}, record.id);
        projection->updateSearchIndex(record);
    }
    void reopen()
    {
        projection.reset();
        projection.emplace(path);
    }
    /// How many rows are named for a keyword.
    qsizetype named(const QString& keyword)
    {
        return projection->connection()
            .stringResults("SELECT rowid FROM screenshots_grams WHERE screenshots_grams MATCH ?",
                           {QString::fromUtf8(GramIndex::query(keyword).match)})
            .size();
    }
    qsizetype found(const QString& text)
    {
        ListRequest request;
        request.rawQuery = text;
        return projection->page(request, {}).size();
    }
    qint64 indexedThrough() { return GramIndex::indexedThrough(projection->connection()); }

    testing::TemporaryFolder folder;
    QString path{folder.file(QStringLiteral("Tessary.metadata.sqlite3"))};
    std::optional<Projection> projection{std::in_place, path};
};

TEST_F(GramIndexTest, AsksForTheGramsOfAKeyword)
{
    EXPECT_EQ(GramIndex::query(QStringLiteral("Hello")).match, R"("hel" AND "ell" AND "llo")");
    EXPECT_EQ(GramIndex::query(QStringLiteral("a\"b")).match, R"("a""b")");
    EXPECT_EQ(GramIndex::query(QStringLiteral("th")).match, R"("th" *)");
    EXPECT_EQ(GramIndex::query(QStringLiteral("会")).match, R"("会" *)");
}

TEST_F(GramIndexTest, WhatLikeTakesForAnythingParts)
{
    EXPECT_EQ(GramIndex::query(QStringLiteral("ab%会议_abc")).match, R"("会议" AND "abc")");
    EXPECT_EQ(GramIndex::query(QStringLiteral("%")).match, "");
    EXPECT_EQ(GramIndex::query(QStringLiteral("a_b")).match, "");
}

TEST_F(GramIndexTest, NothingCanBeAskedForOneLetter)
{
    EXPECT_EQ(GramIndex::query(QStringLiteral("e")).match, "");
}

TEST_F(GramIndexTest, KnowsWhichKeywordsItIsSureOf)
{
    for (const QString& keyword : {QStringLiteral("The"), QStringLiteral("th"), QStringLiteral("会议"),
                                   QStringLiteral("会"), QStringLiteral("a会")})
        EXPECT_TRUE(GramIndex::query(keyword).isExact) << keyword.toStdString();
    for (const QString& keyword : {QStringLiteral("them"), QStringLiteral("e"), QStringLiteral("会议室"),
                                   QStringLiteral("ab会"), QStringLiteral("%th"), QStringLiteral("t_e")})
        EXPECT_FALSE(GramIndex::query(keyword).isExact) << keyword.toStdString();
}

TEST_F(GramIndexTest, OfALongKeywordSomeGramsAreEnough)
{
    const QByteArray query =
        GramIndex::query(QStringLiteral("abcdefghijklmnopqrstuvwxyz").repeated(40)).match;
    EXPECT_EQ(query.count(" AND "), 5);
}

TEST_F(GramIndexTest, IndexesNewRowsInPieces)
{
    for (int i = 0; i < 5; ++i)
        add(QStringLiteral("重庆火锅 %1").arg(i));
    EXPECT_EQ(indexedThrough(), 0);
    EXPECT_TRUE(projection->indexGrams(3));
    EXPECT_EQ(indexedThrough(), 3);
    EXPECT_EQ(named(QStringLiteral("火锅")), 3);
    EXPECT_FALSE(projection->indexGrams(3));
    EXPECT_EQ(named(QStringLiteral("火锅")), 5);
    EXPECT_EQ(named(QStringLiteral("火")), 5);
    EXPECT_EQ(named(QStringLiteral("鱼")), 0);
}

TEST_F(GramIndexTest, AnEditedRowIsFoundAtOnceAndIndexedAgainLater)
{
    const ScreenshotRecord record = add(QStringLiteral("text"));
    projection->indexGrams(kAll);
    setNote(record, QStringLiteral("发票"));
    EXPECT_EQ(GramIndex::unindexedRows(projection->connection()), 1);
    EXPECT_EQ(found(QStringLiteral("发票")), 1);
    projection->indexGrams(kAll);
    EXPECT_EQ(GramIndex::unindexedRows(projection->connection()), 0);
    EXPECT_EQ(named(QStringLiteral("发票")), 1);
    setNote(record, QStringLiteral("合同"));
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("合同")), 1);
    EXPECT_EQ(found(QStringLiteral("发票")), 0);
}

TEST_F(GramIndexTest, MarksAndUsesAreNoChangeOfTexts)
{
    const ScreenshotRecord record = add(QStringLiteral("text"));
    projection->indexGrams(kAll);
    projection->update("is_favorite = 1, last_used_at = 5", {}, record.id);
    EXPECT_EQ(GramIndex::unindexedRows(projection->connection()), 0);
}

TEST_F(GramIndexTest, AChangeByAProgramThatKnowsNoGramsIsNotMissed)
{
    add(QStringLiteral("text"));
    projection->indexGrams(kAll);
    SQLiteConnection(path).run("UPDATE screenshots SET ocr_text = '发票'");
    EXPECT_EQ(found(QStringLiteral("发票")), 1);
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("发票")), 1);
}

TEST_F(GramIndexTest, ARowWhoseIdWasUsedBeforeIsIndexedAgain)
{
    const ScreenshotRecord first = add(QStringLiteral("first"));
    projection->indexGrams(kAll);
    projection->remove(identifierText(first.id));
    add(QStringLiteral("second"));
    EXPECT_EQ(indexedThrough(), 1);
    EXPECT_EQ(GramIndex::unindexedRows(projection->connection()), 1);
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("second")), 1);
    EXPECT_EQ(found(QStringLiteral("first")), 0);
}

TEST_F(GramIndexTest, ColumnsAreApart)
{
    ScreenshotRecord record = textRecord(QStringLiteral("xyz"));
    record.filename = QStringLiteral("ab");
    record.note = QStringLiteral("yz");
    record.generatedTitle = QStringLiteral("cd");
    record.sourceAppName.reset();
    projection->insertProjection(record);
    projection->updateSearchIndex(record);
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("xyz")), 1);
    EXPECT_EQ(named(QStringLiteral("abx")), 0);
    EXPECT_EQ(named(QStringLiteral("yza")), 0);
}

TEST_F(GramIndexTest, AnIndexByOtherRulesIsMadeAnew)
{
    add(QStringLiteral("text"));
    projection->indexGrams(kAll);
    projection->connection().run("UPDATE gram_state SET rules = rules + 1");
    reopen();
    EXPECT_EQ(indexedThrough(), 0);
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("text")), 1);
}

TEST_F(GramIndexTest, AProjectionWithoutOneGainsIt)
{
    add(QStringLiteral("text"));
    projection->connection().run("DROP TABLE screenshots_grams");
    reopen();
    EXPECT_EQ(found(QStringLiteral("text")), 1);
    EXPECT_FALSE(projection->indexGrams(kAll));
    EXPECT_EQ(named(QStringLiteral("text")), 1);
}

TEST_F(GramIndexTest, TellsWhetherItIsRight)
{
    add(QStringLiteral("one"));
    projection->indexGrams(kAll);
    add(QStringLiteral("behind what is indexed"));
    EXPECT_TRUE(projection->hasRightGrams(1));
    EXPECT_TRUE(projection->hasRightGrams(2));
    EXPECT_TRUE(projection->hasRightGrams(77));
    projection->connection().run("UPDATE screenshots SET note = 'behind its back' WHERE rowid = 1");
    EXPECT_TRUE(projection->hasRightGrams(1)); // it knows of that
    projection->connection().run("DELETE FROM gram_pending");
    EXPECT_FALSE(projection->hasRightGrams(1));
    projection->forgetGrams();
    EXPECT_TRUE(projection->hasRightGrams(1));
    projection->indexGrams(kAll);
    EXPECT_TRUE(projection->hasRightGrams(1));
    EXPECT_EQ(named(QStringLiteral("behind its back")), 1);
}

TEST_F(GramIndexTest, ADamagedIndexCostsNoItemAndNoChange)
{
    const ScreenshotRecord record = add(QStringLiteral("text"));
    projection->indexGrams(kAll);
    projection->connection().run("DELETE FROM screenshots_grams_data");
    reopen();
    setNote(record, QStringLiteral("发票"));
    EXPECT_EQ(found(QStringLiteral("发票")), 1);
    EXPECT_EQ(found(QStringLiteral("text")), 1);
    EXPECT_FALSE(projection->indexGrams(kAll));
    EXPECT_FALSE(projection->indexGrams(kAll));
    EXPECT_EQ(named(QStringLiteral("发票")), 1);
}

TEST_F(GramIndexTest, ALongTextIsFoundByItsEndAndAcrossWhereItIsCut)
{
    const qsizetype megabyte = 1024 * 1024;
    const QString text = QString(megabyte - 3, u'a') + QStringLiteral("火锅bcd") + QString(megabyte, u'e') +
                         QStringLiteral("最后");
    add(text);
    projection->indexGrams(kAll);
    EXPECT_EQ(named(QStringLiteral("a火锅bcd")), 1);
    EXPECT_EQ(named(QStringLiteral("e最后")), 1);
}

} // namespace
} // namespace tessary
