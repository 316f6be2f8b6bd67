#include "store/FullTextIdentifiers.h"

#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary {
namespace {

using testing::textRecord;

constexpr char kQuery[] = "SELECT id FROM screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?";

class FullTextIdentifiersTest : public ::testing::Test {
protected:
    FullTextIdentifiersTest() { installFullTextIdentifiers(reader); }

    void add(int count, const QString& text)
    {
        for (int i = 0; i < count; ++i) {
            const ScreenshotRecord record = textRecord(text + u' ' + QString::number(i));
            projection.insertProjection(record);
            projection.updateSearchIndex(record);
        }
    }
    static QStringList sorted(QStringList identifiers)
    {
        identifiers.sort();
        return identifiers;
    }
    QStringList quick(const QString& expression)
    {
        return sorted(reader.stringResults(kQuery, {expression}));
    }
    QStringList plain(const QString& expression)
    {
        return sorted(projection.connection().stringResults(kQuery, {expression}));
    }

    testing::TemporaryFolder folder;
    QString path{folder.file(QStringLiteral("Tessary.metadata.sqlite3"))};
    Projection projection{path};
    SQLiteConnection reader{path};
};

TEST_F(FullTextIdentifiersTest, FindsTheSameItemsAsTheEngineWhetherFewOrMany)
{
    add(30, QStringLiteral("common"));
    add(2, QStringLiteral("rare"));
    for (const char* expression : {"\"rare\"*", "\"comm\"*", "\"1\"*", "\"nothing\"*", "\"\""}) {
        const QString text = QString::fromLatin1(expression);
        EXPECT_EQ(quick(text), plain(text)) << expression;
    }
    EXPECT_EQ(quick(QStringLiteral("\"rare\"*")).size(), 2);
    EXPECT_EQ(quick(QStringLiteral("\"comm\"*")).size(), 30);
}

TEST_F(FullTextIdentifiersTest, TrustsTheEngineAloneWhereRowsMayNotLieBesideTheirItems)
{
    add(3, QStringLiteral("common"));
    projection.connection().run("UPDATE screenshots SET rowid = rowid + 70");
    projection.connection().run("PRAGMA user_version = 0");
    EXPECT_EQ(quick(QStringLiteral("\"common\"*")).size(), 3);
    EXPECT_EQ(quick(QStringLiteral("\"common\"*")), plain(QStringLiteral("\"common\"*")));
}

TEST_F(FullTextIdentifiersTest, SeesItemsThatComeAndGoAndATableMadeAnew)
{
    add(3, QStringLiteral("common"));
    ASSERT_EQ(quick(QStringLiteral("\"common\"*")).size(), 3);
    projection.remove(quick(QStringLiteral("\"common\"*")).first());
    EXPECT_EQ(quick(QStringLiteral("\"common\"*")).size(), 2);
    projection.connection().run("DROP TABLE screenshots_fts_v5");
    EXPECT_THROW(quick(QStringLiteral("\"common\"*")), StoreError);
    Projection again(path);
    EXPECT_TRUE(quick(QStringLiteral("\"common\"*")).isEmpty());
}

TEST_F(FullTextIdentifiersTest, SaysWhatTheEngineSaysOfAWrongExpression)
{
    try {
        quick(QStringLiteral("\"open"));
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.localizedDescription(), [this] {
            try {
                plain(QStringLiteral("\"open"));
            } catch (const StoreError& expected) {
                return expected.localizedDescription();
            }
            return QString();
        }());
    }
}

} // namespace
} // namespace tessary
