#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"
#include "tests/component/store/LibraryFixture.h"

namespace tessary {
namespace {

using testing::await;

class LibrarySearchTest : public testing::LibraryFixture {};

TEST_F(LibrarySearchTest, EveryWordMustMatchAndEachMayInAnotherPlace)
{
    ScreenshotRecord both = item(QStringLiteral("both"));
    both.note = QStringLiteral("x ab x");
    both.ocrText = QStringLiteral("xcdx");
    ScreenshotRecord one = item(QStringLiteral("one"), 200);
    one.note = QStringLiteral("ab");
    add(both);
    add(one);
    EXPECT_EQ(found(QStringLiteral("ab cd")), "both");
    EXPECT_EQ(found(QStringLiteral("ab")), "both one");
    EXPECT_EQ(found(QStringLiteral("ab nowhere")), "");
}

TEST_F(LibrarySearchTest, LooksInEverySearchableProperty)
{
    ScreenshotRecord record = testing::fullRecord();
    record.isDeleted = false;
    record.filename = QStringLiteral("file7");
    record.generatedTitle = QStringLiteral("Title5");
    add(record);
    for (const char* text : {"编辑器", "工作", "WITH", "A NOTE", "FILE7", "完整", "Recognised", "title5"})
        EXPECT_EQ(found(QString::fromUtf8(text)), "file7") << text;
    EXPECT_EQ(found(QStringLiteral("gnome")), "");    // of the bundle identifier
    EXPECT_EQ(found(QStringLiteral("pictures")), ""); // of the path
}

TEST_F(LibrarySearchTest, PinyinFindsChinese)
{
    ScreenshotRecord record = item(QStringLiteral("fapiao"));
    record.filename = QStringLiteral("a");
    record.textContent = QStringLiteral("会议纪要");
    record.note = QStringLiteral("财务");
    add(record);
    EXPECT_EQ(found(QStringLiteral("huiyijiyao")), "a");
    EXPECT_EQ(found(QStringLiteral("huiyi")), "a");
    EXPECT_EQ(found(QStringLiteral("hui yi")), "a");
    EXPECT_EQ(found(QStringLiteral("caiwu")), "");
    EXPECT_EQ(found(QStringLiteral("cai wu")), "a");
    EXPECT_EQ(found(QStringLiteral("jiyap")), "");
}

TEST_F(LibrarySearchTest, QuotesAreSearchedForLiterally)
{
    ScreenshotRecord record = item(QStringLiteral("quoted"));
    record.textContent = QStringLiteral("he said \"hello\" twice");
    add(record);
    EXPECT_EQ(found(QStringLiteral("\"hello\"")), "quoted");
    EXPECT_EQ(found(QStringLiteral("hello\"")), "quoted");
    EXPECT_EQ(found(QStringLiteral("\"")), "quoted");
    EXPECT_EQ(found(QStringLiteral("\"\"\"")), "");
    // Words only, in the full-text table: the quotes are not part of them.
    EXPECT_EQ(found(QStringLiteral("said\"hello")), "quoted");
}

TEST_F(LibrarySearchTest, PercentAndUnderscoreMatchAnything)
{
    add(item(QStringLiteral("10percent")));
    EXPECT_EQ(found(QStringLiteral("1%c")), "10percent");
    EXPECT_EQ(found(QStringLiteral("p_rcent")), "10percent");
    EXPECT_EQ(found(QStringLiteral("p__rcent")), "");
}

TEST_F(LibrarySearchTest, FullTextSyntaxIsNothingSpecial)
{
    add(item(QStringLiteral("words")));
    for (const char* text :
         {"AND", "OR", "NOT", "NEAR(a,b)", "(",    ")", "^words", "-x", "+",  "{a}:", "note:q", "'",
          ";",   "\\", "--",  "!!!",       "，。", "😀", "a:b",    "?",  "?1", "\"*",  "*\""})
        EXPECT_NO_THROW((void)found(QString::fromUtf8(text))) << text;
}

TEST_F(LibrarySearchTest, AsterisksOnlyAreLookedForInTheTexts)
{
    ScreenshotRecord starred = item(QStringLiteral("starred"));
    starred.note = QStringLiteral("five ***** hotel");
    add(starred);
    add(item(QStringLiteral("plain")));
    EXPECT_EQ(found(QStringLiteral("***")), "starred");
    EXPECT_EQ(found(QStringLiteral("*")), "starred");
    EXPECT_EQ(found(QStringLiteral("******")), "");
    EXPECT_EQ(found(QStringLiteral("* plain")), "");
}

TEST_F(LibrarySearchTest, AWordLongerThanSQLitesOwnLimitIsFound)
{
    constexpr qsizetype kLong = 60'000;
    const QString word(kLong, u'w');
    ScreenshotRecord record = item(QStringLiteral("long"));
    record.textContent = QStringLiteral("before ") + word + QStringLiteral(" after");
    add(record);
    EXPECT_EQ(found(word), "long");
    EXPECT_EQ(found(u'v' + word), "");
    EXPECT_EQ(found(QStringLiteral("app:") + word), "");
    EXPECT_EQ(found(QStringLiteral("会").repeated(kLong)), "");
}

TEST_F(LibrarySearchTest, ANulInAWordFailsNoPage)
{
    const QString word = QStringLiteral("one") + QChar(u'\0') + QStringLiteral("two");
    ScreenshotRecord record = item(QStringLiteral("nul"));
    record.textContent = QStringLiteral("x ") + word;
    add(record);
    ScreenshotRecord apart = item(QStringLiteral("apart"));
    apart.textContent = QStringLiteral("one x two");
    add(apart);
    EXPECT_EQ(found(word), "nul");
    EXPECT_EQ(found(QString(QChar(u'\0'))), "nul");
    EXPECT_EQ(found(QStringLiteral("app:") + word), "");
}

TEST_F(LibrarySearchTest, OperatorsNarrowTheList)
{
    ScreenshotRecord mail = item(QStringLiteral("mail"), 3600);
    mail.sourceAppName = QStringLiteral("Apple Mail");
    mail.tags = {QStringLiteral("workshop")};
    add(mail);
    ScreenshotRecord notes = item(QStringLiteral("notes"), 86400);
    notes.sourceAppName = QStringLiteral("备忘录");
    notes.tags = {QStringLiteral("home")};
    add(notes);
    add(item(QStringLiteral("nobody"), 2 * 86400));
    EXPECT_EQ(found(QStringLiteral("app:MAIL")), "mail");
    EXPECT_EQ(found(QStringLiteral("app:\"apple m\"")), "mail");
    EXPECT_EQ(found(QStringLiteral("app:备忘")), "notes");
    EXPECT_EQ(found(QStringLiteral("app:\"\"")), "mail notes");
    EXPECT_EQ(found(QStringLiteral("tag:work")), "mail");
    EXPECT_EQ(found(QStringLiteral("after:2024-05-01")), "mail");
    EXPECT_EQ(found(QStringLiteral("before:2024-05-01")), "notes nobody");
    EXPECT_EQ(found(QStringLiteral("before:2024-05-01 after:2024-05-01")), "");
    EXPECT_EQ(found(QStringLiteral("before:2024-13-01 is:other")), "mail notes nobody");
}

TEST_F(LibrarySearchTest, SearchesWithinTheScopeInItsOrder)
{
    for (const char* name : {"aaa1", "aaa2", "bbb"})
        add(item(QLatin1String(name), name[3] == '1' ? 10 : 20));
    ScreenshotRecord trashed = item(QStringLiteral("aaa3"));
    trashed.isDeleted = true;
    add(trashed);
    EXPECT_EQ(found(QStringLiteral("AAA")), "aaa1 aaa2");
    EXPECT_EQ(listed(request(QStringLiteral("aaa"), ScreenshotScope::All, ScreenshotSort::Oldest)),
              "aaa2 aaa1");
    EXPECT_EQ(listed(request(QStringLiteral("aaa"), ScreenshotScope::Trash)), "aaa3");
    EXPECT_EQ(listed(request(QStringLiteral("aaa"), ScreenshotScope::Images)), "");
}

TEST_F(LibrarySearchTest, AsManyWordsAsAPageHoldsAreLookedFor)
{
    QStringList words;
    for (int i = 0; i < 1500; ++i)
        words.append(QStringLiteral("w%1").arg(i));
    ScreenshotRecord record = item(QStringLiteral("page"));
    record.textContent = words.join(u' ');
    add(record);
    EXPECT_EQ(found(record.textContent), "page");
    EXPECT_EQ(found(record.textContent + QStringLiteral(" nowhere")), "");
    EXPECT_THROW((void)found(QStringLiteral("w ").repeated(5000)), StoreError);
}

TEST_F(LibrarySearchTest, DamagedTagsAreNone)
{
    ScreenshotRecord record = item(QStringLiteral("damaged"));
    record.tags = {QStringLiteral("lost")};
    add(record);
    ScreenshotRecord sound = item(QStringLiteral("sound"));
    sound.tags = {QStringLiteral("kept")};
    add(sound);
    SQLiteConnection(projectionPath())
        .run("UPDATE screenshots SET tags_json = '[\"lo' WHERE filename = 'damaged'");
    EXPECT_EQ(await(store->facets()).tags, QStringList{QStringLiteral("kept")});
}

TEST_F(LibrarySearchTest, AnEmptyLibraryHasNoFacetsAndNoItems)
{
    EXPECT_EQ(await(store->facets()), LibraryFacets());
    EXPECT_EQ(found(QStringLiteral("x")), "");
}

} // namespace
} // namespace tessary
