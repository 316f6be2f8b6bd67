#include "platform/linux/SettingsFile.h"

#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

#include <QFileInfo>
#include <QSettings>

#include <sys/stat.h>

namespace tessary {
namespace {

using testing::eventually;
using testing::readFile;
using testing::writeFile;

const QString kKey = QStringLiteral("key");

mode_t modeOf(const QString& path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 0777 : 0;
}

class SettingsFileTest : public ::testing::Test {
protected:
    /// What a key reads as after the program was started again.
    QVariant afterRestart(const QVariant& value)
    {
        SettingsFile(path).set(kKey, value);
        return SettingsFile(path).object(kKey);
    }

    testing::TemporaryFolder folder;
    QString path = folder.file(QStringLiteral("config/Tessary/settings.ini"));
};

TEST_F(SettingsFileTest, AMissingFileIsEmptyAndNotCreatedByReading)
{
    {
        const SettingsFile settings(path);
        EXPECT_FALSE(settings.contains(kKey));
        EXPECT_EQ(settings.problem(), std::nullopt);
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(SettingsFileTest, KeepsEveryTypeAcrossARestart)
{
    {
        SettingsFile settings(path);
        settings.set(QStringLiteral("flag"), true);
        settings.set(QStringLiteral("off"), false);
        settings.set(QStringLiteral("count"), -42);
        settings.set(QStringLiteral("width"), 780.25);
    }
    const SettingsFile settings(path);
    EXPECT_TRUE(settings.boolean(QStringLiteral("flag")));
    EXPECT_FALSE(settings.boolean(QStringLiteral("off")));
    EXPECT_TRUE(settings.contains(QStringLiteral("off")));
    EXPECT_EQ(settings.integer(QStringLiteral("count")), -42);
    EXPECT_EQ(settings.real(QStringLiteral("width")), 780.25);
}

TEST_F(SettingsFileTest, KeepsAnyTextAcrossARestart)
{
    for (const QString& text :
         {QStringLiteral("v2|31|6144|O"), QStringLiteral("v2|1|2|A|B"), QStringLiteral("剪贴板 图片"),
          QStringLiteral("a, b, \"c\""), QStringLiteral("C:\\dir\\x41"), QStringLiteral(" padded "),
          QStringLiteral("@Invalid()"), QStringLiteral("%1;#=["), QStringLiteral("two\nlines"),
          QString(u""_qs)}) {
        SettingsFile(path).set(kKey, text);
        EXPECT_EQ(SettingsFile(path).string(kKey), text) << text.toStdString();
    }
}

TEST_F(SettingsFileTest, KeepsAnyListAcrossARestart)
{
    const QList<QStringList> lists{{},
                                   {QString(u""_qs)},
                                   {QStringLiteral("one")},
                                   {QStringLiteral("with, comma")},
                                   {QStringLiteral("a\\b"), QStringLiteral("中文"), QStringLiteral("q\"q")},
                                   {QStringLiteral("x"), QString(u""_qs), QStringLiteral("y|z")}};
    for (const QStringList& list : lists) {
        SettingsFile(path).set(kKey, list);
        EXPECT_EQ(SettingsFile(path).stringArray(kKey), list) << list.join(u'/').toStdString();
    }
}

TEST_F(SettingsFileTest, AnEmptyListIsNoText)
{
    EXPECT_EQ(afterRestart(QStringList()), QVariant(QStringList()));
    EXPECT_EQ(SettingsFile(path).string(kKey), std::nullopt);
}

TEST_F(SettingsFileTest, AnInvalidValueRemovesTheKey)
{
    EXPECT_EQ(afterRestart(7).toInt(), 7);
    EXPECT_FALSE(afterRestart(QVariant()).isValid());
}

TEST_F(SettingsFileTest, StandsUnderTheGroupGeneralAndKeepsOthers)
{
    writeFile(path, "[General]\nold=1\n\n[window]\nsize=\"3,4\"\n");
    SettingsFile(path).set(kKey, QStringLiteral("new"));
    const QSettings written(path, QSettings::IniFormat);
    EXPECT_EQ(written.value(QStringLiteral("old")).toInt(), 1);
    EXPECT_EQ(written.value(QStringLiteral("window/size")).toString(), QStringLiteral("3,4"));
    EXPECT_TRUE(readFile(path).contains("[General]\nkey=new\n"));
}

TEST_F(SettingsFileTest, IsForThePersonAlone)
{
    SettingsFile(path).set(kKey, 1);
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0700U);
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("settings.ini")});
}

TEST_F(SettingsFileTest, IsWrittenSoonWithoutWaitingForTheEnd)
{
    SettingsFile settings(path);
    settings.set(kKey, 1);
    settings.set(kKey, 2);
    EXPECT_TRUE(eventually([&] { return readFile(path).contains("key=2"); }));
}

TEST_F(SettingsFileTest, ADamagedFileIsKeptAsideAndThePersonTold)
{
    writeFile(path, QByteArray("\x00\x01garbage\n", 10));
    const SettingsFile settings(path);
    ASSERT_TRUE(settings.problem());
    EXPECT_TRUE(settings.problem()->contains(QStringLiteral("settings.ini.bad")));
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(readFile(path + QStringLiteral(".bad")), QByteArray("\x00\x01garbage\n", 10));
}

TEST_F(SettingsFileTest, AnOlderDamagedFileIsNeverOverwritten)
{
    writeFile(path + QStringLiteral(".bad"), "first");
    writeFile(path, "no settings at all\n");
    const SettingsFile settings(path);
    EXPECT_EQ(readFile(path + QStringLiteral(".bad")), QByteArray("first"));
    EXPECT_EQ(readFile(path + QStringLiteral(".bad.2")), QByteArray("no settings at all\n"));
}

TEST_F(SettingsFileTest, AnOversizedFileCountsAsDamaged)
{
    writeFile(path, "[General]\nkey=" + QByteArray(1024 * 1024, 'x'));
    const SettingsFile settings(path);
    EXPECT_TRUE(settings.problem());
    EXPECT_FALSE(settings.contains(kKey));
}

TEST_F(SettingsFileTest, ALinkedFileStaysLinked)
{
    const QString target = folder.file(QStringLiteral("dotfiles/settings.ini"));
    writeFile(target, "[General]\nold=1\n");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(target, path));
    SettingsFile(path).set(kKey, 2);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_TRUE(readFile(target).contains("key=2"));
}

TEST_F(SettingsFileTest, AFailedWriteIsReportedOnceAndMadeUpForLater)
{
    // A file where the folder should be.
    writeFile(folder.file(QStringLiteral("config")), "in the way");
    int failures = 0;
    SettingsFile settings(path);
    settings.setWriteFailureHandler([&](const FileError&) { ++failures; });
    settings.set(kKey, 1);
    EXPECT_TRUE(eventually([&] { return failures == 1; }));
    settings.set(kKey, 2);
    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("config"))));
    settings.set(kKey, 3);
    EXPECT_TRUE(eventually([&] { return readFile(path).contains("key=3"); }));
    EXPECT_EQ(failures, 1);
}

// --- while another program writes, too -----------------------------------------

TEST_F(SettingsFileTest, TellsWhatAnotherProgramHasChanged)
{
    writeFile(path, "[General]\nkey=1\nflag=true\n");
    SettingsFile settings(path);
    int changes = 0;
    settings.setChangeHandler([&] { ++changes; });
    for (int round = 2; round < 5; ++round) { // replaced each time, as editors do
        writeFile(folder.file(QStringLiteral("new")),
                  "[General]\nflag=true\nkey=" + QByteArray::number(round));
        ASSERT_EQ(::rename(qPrintable(folder.file(QStringLiteral("new"))), qPrintable(path)), 0);
        ASSERT_TRUE(eventually([&] { return settings.integer(kKey) == round; }));
    }
    EXPECT_EQ(changes, 3);
    writeFile(path, "[General]\nflag=true\n"); // in place
    EXPECT_TRUE(eventually([&] { return !settings.contains(kKey); }));
    EXPECT_TRUE(settings.boolean(QStringLiteral("flag")));
}

TEST_F(SettingsFileTest, OwnWritingIsNoChangeOfOthers)
{
    SettingsFile settings(path);
    int changes = 0;
    settings.setChangeHandler([&] { ++changes; });
    settings.set(kKey, true);
    settings.set(QStringLiteral("list"), QStringList());
    settings.set(QStringLiteral("width"), 780.0);
    ASSERT_TRUE(eventually([&] { return QFileInfo::exists(path); }));
    SettingsFile other(path);
    other.set(QStringLiteral("last"), 1); // is heard of after whatever the first writing was heard of
    EXPECT_TRUE(eventually([&] { return settings.contains(QStringLiteral("last")); }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(settings.object(kKey), QVariant(true));
}

TEST_F(SettingsFileTest, NothingIsLostWhenBothChangeDifferentKeys)
{
    writeFile(path, "[General]\nours=1\ntheirs=1\n");
    SettingsFile settings(path);
    settings.set(QStringLiteral("ours"), 2);
    writeFile(path, "[General]\nours=1\ntheirs=2\nnew=3\n");
    EXPECT_TRUE(eventually([&] { return readFile(path).contains("ours=2"); }));
    EXPECT_TRUE(readFile(path).contains("theirs=2"));
    EXPECT_TRUE(readFile(path).contains("new=3"));
    EXPECT_TRUE(eventually([&] { return settings.integer(QStringLiteral("theirs")) == 2; }));
    EXPECT_EQ(settings.integer(QStringLiteral("ours")), 2);
}

TEST_F(SettingsFileTest, WhatIsHalfWrittenOrGoneChangesNothing)
{
    writeFile(path, "[General]\nkey=1\n");
    SettingsFile settings(path);
    writeFile(path, "");
    writeFile(path, QByteArray("\0\1garbage", 9));
    ASSERT_TRUE(QFile::remove(path));
    settings.set(QStringLiteral("other"), 1);
    EXPECT_TRUE(eventually([&] { return readFile(path).contains("other=1"); }));
    EXPECT_TRUE(readFile(path).contains("key=1"));
    EXPECT_EQ(settings.integer(kKey), 1);
}

} // namespace
} // namespace tessary
