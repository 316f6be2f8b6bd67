#include "store/FacetQueries.h"
#include "store/LocalizedOrder.h"
#include "store/TagsCoding.h"
#include "store/sqlite/SQLiteConnection.h"
#include "tests/component/store/LibraryFixture.h"

#include <random>

namespace tessary {
namespace {

using testing::await;

class LibraryFacetsTest : public testing::LibraryFixture {
protected:
    /// What facets are, from all items outside the trash.
    LibraryFacets facetsOfAllItems()
    {
        SQLiteConnection connection(projectionPath());
        LibraryFacets facets;
        facets.sourceApps =
            connection.stringResults("SELECT DISTINCT source_app_name FROM screenshots NOT INDEXED WHERE "
                                     "is_deleted = 0 AND source_app_name IS NOT NULL AND "
                                     "length(trim(source_app_name)) > 0 "
                                     "ORDER BY source_app_name COLLATE NOCASE, source_app_name");
        QSet<QString> tags;
        SQLiteStatement rows = connection.query("SELECT tags_json FROM screenshots WHERE is_deleted = 0");
        while (rows.nextRow()) {
            for (const QString& tag : decodeTags(rows.text(0).toUtf8()))
                tags.insert(tag);
        }
        facets.tags = localizedOrder(tags.values());
        return facets;
    }
    QStringList plan(const char* query)
    {
        QStringList lines;
        SQLiteConnection connection(projectionPath());
        SQLiteStatement rows = connection.query(QByteArray("EXPLAIN QUERY PLAN ") + query);
        while (rows.nextRow()) {
            if (rows.text(3).contains(QStringLiteral(" screenshots ")))
                lines.append(rows.text(3));
        }
        return lines;
    }
    QStringList indexes()
    {
        return SQLiteConnection(projectionPath())
            .stringResults("SELECT name FROM sqlite_schema WHERE type = 'index' AND name GLOB 'list_*' "
                           "ORDER BY name");
    }
};

TEST_F(LibraryFacetsTest, AreThoseOfTheItemsOutsideTheTrashInTheirOrders)
{
    int number = 0;
    const auto addWith = [&](const std::optional<QString>& app, const QStringList& tags, bool isDeleted) {
        ScreenshotRecord record = item(QStringLiteral("item%1").arg(++number));
        record.sourceAppName = app;
        record.tags = tags;
        record.isDeleted = isDeleted;
        add(record);
    };
    addWith(QStringLiteral("files"), {QStringLiteral("zebra"), QStringLiteral("Apple")}, false);
    addWith(QStringLiteral("Terminal"), {QStringLiteral("apple"), QStringLiteral("éclair")}, false);
    addWith(QStringLiteral("files"), {QStringLiteral("banana"), QStringLiteral("zebra")}, false);
    addWith(QStringLiteral("Files"), {}, false);
    addWith(QStringLiteral("  "), {QStringLiteral("Fig")}, false);
    addWith(std::nullopt, {}, false);
    addWith(QStringLiteral("Gone"), {QStringLiteral("gone")}, true);
    const LibraryFacets facets = await(store->facets());
    EXPECT_EQ(facets.sourceApps.join(u' ').toStdString(), "Files files Terminal");
    EXPECT_EQ(facets.tags.join(u' ').toStdString(), "Apple apple banana éclair Fig zebra");
}

TEST_F(LibraryFacetsTest, AreWhatALookAtEveryItemFinds)
{
    add(item(QStringLiteral("x")));
    SQLiteConnection connection(projectionPath());
    const std::array names{"NULL",
                           "''",
                           "'  '",
                           "' x'",
                           "char(9)",
                           "'a'",
                           "'A'",
                           "'b' || char(0) || 'c'",
                           "'ä'",
                           "'Ä'",
                           "'微信'",
                           "'é'",
                           "x'61'",
                           "x'FF'",
                           "7",
                           "'a\"b'",
                           "'[]'",
                           "'Kate 2'",
                           "'kate'",
                           "'b' || char(0)",
                           "'😀'",
                           "'Z'",
                           "'z' || char(1)",
                           "'~'"};
    const std::array lists{"'[]'",         "''",        "'[ ]'",  "'[\"a\"]'",        "'[\"A\",\"b\"]'",
                           "'[\"'",        "'[1]'",     "'{}'",   "'[\"a\"]' || ' '", "x'5B226222' || x'5D'",
                           "'[\"标签\"]'", "'[\"é\"]'", "'null'", "'[\"a\",\"a\"]'"};
    std::mt19937 dice(7);
    for (int round = 0; round < 60; ++round) {
        connection.run("DELETE FROM screenshots");
        const auto count = static_cast<int>(dice() % 12);
        for (int i = 0; i < count; ++i) {
            const QByteArray number = QByteArray::number(i);
            connection.run("INSERT INTO screenshots (id, content_hash, filename, original_path, "
                           "library_path, captured_at, imported_at, pixel_width, pixel_height, file_size, "
                           "source_app_name, tags_json, is_deleted) VALUES ('" +
                           number + "', '" + number + "', '', '', '', 0, 0, 0, 0, 0, " +
                           names.at(dice() % names.size()) + ", " + lists.at(dice() % lists.size()) + ", " +
                           (dice() % 4 == 0 ? "1" : "0") + ")");
        }
        EXPECT_EQ(await(store->facets()), facetsOfAllItems());
    }
}

TEST_F(LibraryFacetsTest, GoFromValueToValueInTheirIndexes)
{
    for (const char* query : {kSourceAppNamesQuery, kTagListsQuery}) {
        const QStringList lines = plan(query);
        EXPECT_EQ(lines.size(), 2);
        for (const QString& line : lines)
            EXPECT_TRUE(line.startsWith(QStringLiteral("SEARCH screenshots USING COVERING INDEX list_")))
                << qPrintable(line);
    }
}

TEST_F(LibraryFacetsTest, ALibraryWithTheFormerIndexGetsTheNewOnes)
{
    add(item(QStringLiteral("x")));
    const QStringList before = indexes();
    const LibraryFacets facets = await(store->facets());
    store.reset();
    SQLiteConnection(projectionPath())
        .run("DROP INDEX list_apps; DROP INDEX list_tags; CREATE INDEX list_facets ON "
             "screenshots(source_app_name, tags_json, is_deleted) WHERE is_deleted = 0");
    store = await(SQLiteStore::open(databasePath()));
    EXPECT_EQ(await(store->facets()), facets);
    EXPECT_EQ(indexes(), before);
}

} // namespace
} // namespace tessary
