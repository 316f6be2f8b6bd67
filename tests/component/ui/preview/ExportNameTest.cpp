#include "ui/preview/ExportName.h"

#include "tests/support/RecordSamples.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

QString pictureName(const QString& filename, const QString& type = QStringLiteral("png"))
{
    ScreenshotRecord record = testing::pictureRecord(1772701623, 10);
    record.filename = filename;
    record.generatedTitle.reset();
    record.fileType = type;
    return exportName(record);
}

TEST(ExportNameTest, APictureKeepsItsNameAndGetsItsOwnExtensionOnce)
{
    EXPECT_EQ(pictureName(QStringLiteral("截屏 1.png")), QStringLiteral("截屏 1.png"));
    EXPECT_EQ(pictureName(QStringLiteral("holiday")), QStringLiteral("holiday.png"));
}

TEST(ExportNameTest, ATextIsNamedAfterItsFirstLine)
{
    EXPECT_EQ(exportName(testing::textRecord(QStringLiteral("买菜\n鸡蛋"))), QStringLiteral("买菜.txt"));
}

TEST(ExportNameTest, CharactersThatFileSystemsRefuseAreLeftOut)
{
    const QString name = exportName(testing::textRecord(QStringLiteral("a/b\\c:d*e?f\"g<h>i|j\tk")));
    EXPECT_EQ(name, QStringLiteral("a b c d e f g h i j k.txt"));
    EXPECT_EQ(exportName(testing::textRecord(QStringLiteral("../../etc/passwd"))),
              QStringLiteral("etc passwd.txt"));
    EXPECT_EQ(exportName(testing::textRecord(QStringLiteral("???"))), QStringLiteral("文字.txt"));
}

TEST(ExportNameTest, ALongNameFitsTheFileSystem)
{
    for (const QString& piece : {QStringLiteral("汉"), QStringLiteral("😀"), QStringLiteral("a")}) {
        const QString name = exportName(testing::textRecord(piece.repeated(400)));
        EXPECT_LE(name.toUtf8().size(), 200);
        EXPECT_GT(name.toUtf8().size(), 60);
        EXPECT_TRUE(name.endsWith(QStringLiteral(".txt")));
        EXPECT_FALSE(name.contains(QChar::ReplacementCharacter));
    }
}

} // namespace
} // namespace tessary
