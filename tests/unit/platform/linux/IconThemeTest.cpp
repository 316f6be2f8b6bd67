#include "platform/linux/IconTheme.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary {
namespace {

using testing::writeFile;

class IconThemeTest : public ::testing::Test {
protected:
    void theme(const QString& name, const QByteArray& index)
    {
        writeFile(folder.file(name + QStringLiteral("/index.theme")), "[Icon Theme]\n" + index);
    }
    void icon(const QString& path) { writeFile(folder.file(path), "picture"); }
    QString find(const QString& name, int size, const QString& themeName = QStringLiteral("mine"))
    {
        const QString found =
            IconTheme({folder.path()}, {folder.file(QStringLiteral("pixmaps"))}, themeName).find(name, size);
        return found.isEmpty() ? found : found.sliced(folder.path().size() + 1);
    }

    testing::TemporaryFolder folder;
};

TEST_F(IconThemeTest, TakesTheFolderMadeForTheSize)
{
    theme(QStringLiteral("mine"),
          "Directories=16,64,any\n[16]\nSize=16\nType=Fixed\n[64]\nSize=64\nThreshold=4\n"
          "[any]\nSize=128\nMinSize=100\nMaxSize=512\nType=Scalable\n");
    for (const char* path : {"mine/16/app.png", "mine/64/app.png", "mine/any/app.svg"})
        icon(QString::fromLatin1(path));
    EXPECT_EQ(find(QStringLiteral("app"), 16), QStringLiteral("mine/16/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 60), QStringLiteral("mine/64/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 256), QStringLiteral("mine/any/app.svg"));
    EXPECT_EQ(find(QStringLiteral("app"), 20), QStringLiteral("mine/16/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 90), QStringLiteral("mine/any/app.svg"));
}

TEST_F(IconThemeTest, CountsTheScaleOfAFolder)
{
    theme(QStringLiteral("mine"), "Directories=64,64x2\n[64]\nSize=64\n[64x2]\nSize=64\nScale=2\n");
    icon(QStringLiteral("mine/64/app.png"));
    icon(QStringLiteral("mine/64x2/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 128), QStringLiteral("mine/64x2/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 64), QStringLiteral("mine/64/app.png"));
}

TEST_F(IconThemeTest, AsksTheParentsThenAdwaitaThenHicolorThenPixmaps)
{
    const QByteArray folders("Directories=48\n[48]\nSize=48\n");
    theme(QStringLiteral("mine"), "Inherits=parent\n" + folders);
    theme(QStringLiteral("parent"), "Inherits=hicolor\n" + folders);
    theme(QStringLiteral("Adwaita"), "Inherits=hicolor\n" + folders);
    theme(QStringLiteral("hicolor"), folders);
    for (const char* path : {"parent/48/a.png", "Adwaita/48/a.png", "Adwaita/48/b.png", "hicolor/48/b.png",
                             "hicolor/48/c.png", "pixmaps/c.png", "pixmaps/d.xpm"})
        icon(QString::fromLatin1(path));
    EXPECT_EQ(find(QStringLiteral("a"), 48), QStringLiteral("parent/48/a.png"));
    EXPECT_EQ(find(QStringLiteral("b"), 48), QStringLiteral("Adwaita/48/b.png"));
    EXPECT_EQ(find(QStringLiteral("c"), 48), QStringLiteral("hicolor/48/c.png"));
    EXPECT_EQ(find(QStringLiteral("d.xpm"), 48), QStringLiteral("pixmaps/d.xpm"));
    EXPECT_EQ(find(QStringLiteral("b"), 48, QString()), QStringLiteral("Adwaita/48/b.png"));
    EXPECT_EQ(find(QStringLiteral("e"), 48), QString());
}

TEST_F(IconThemeTest, AnEndlessInheritanceEnds)
{
    theme(QStringLiteral("mine"), "Inherits=other,mine\nDirectories=1\n[1]\nSize=1\n");
    theme(QStringLiteral("other"), "Inherits=mine\n");
    EXPECT_EQ(find(QStringLiteral("missing"), 48), QString());
}

TEST_F(IconThemeTest, AnAbsolutePathIsTakenAsItIs)
{
    icon(QStringLiteral("opt/app.png"));
    EXPECT_EQ(find(folder.file(QStringLiteral("opt/app.png")), 48), QStringLiteral("opt/app.png"));
    EXPECT_EQ(find(folder.file(QStringLiteral("opt/none.png")), 48), QString());
}

TEST_F(IconThemeTest, NamesDoNotLeaveTheThemes)
{
    icon(QStringLiteral("secret.png"));
    theme(QStringLiteral("mine"), "Directories=../..,48\n[../..]\nSize=48\n[48]\nSize=48\n");
    ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("mine/48"))));
    EXPECT_EQ(find(QStringLiteral("../../secret"), 48), QString());
    EXPECT_EQ(find(QString(), 48), QString());
}

TEST_F(IconThemeTest, AGarbledIndexHasNoIcons)
{
    theme(QStringLiteral("mine"), "Directories=a,b,c\n[a]\nSize=-5\n[b]\nSize=99999999999\n[c]\n\xff\xfe=\n");
    icon(QStringLiteral("mine/a/app.png"));
    EXPECT_EQ(find(QStringLiteral("app"), 48), QString());
}

} // namespace
} // namespace tessary
