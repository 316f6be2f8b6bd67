#include "platform/linux/DesktopScreenshotDefaults.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/ScopedEnvironment.h"
#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary {
namespace {

using testing::writeFile;

class DesktopScreenshotDefaultsTest : public ::testing::Test {
protected:
    DesktopScreenshotDefaultsTest()
    {
        environment.set("HOME", folder.path());
        environment.set("XDG_CONFIG_HOME", folder.file(QStringLiteral("c")));
        environment.unset("XDG_CURRENT_DESKTOP");
    }
    void gnome(const QByteArray& value)
    {
        writeFile(folder.file(QStringLiteral("c/glib-2.0/settings/keyfile")),
                  "[org/gnome/gnome-screenshot]\nauto-save-directory=" + value + '\n');
    }
    void kde(const QByteArray& lines) { writeFile(folder.file(QStringLiteral("c/spectaclerc")), lines); }
    void xfce(const QByteArray& value)
    {
        writeFile(folder.file(QStringLiteral("c/xfce4/xfce4-screenshooter")),
                  "app=none\nscreenshot_dir=" + value + "\nlast_user=\n");
    }

    testing::TemporaryFolder folder;
    testing::ScopedEnvironment environment;
    XdgFolders folders;
    DesktopScreenshotDefaults defaults{folders};
};

TEST_F(DesktopScreenshotDefaultsTest, NothingIsConfigured)
{
    EXPECT_EQ(defaults.location(), std::nullopt);
}

TEST_F(DesktopScreenshotDefaultsTest, TheRunningDesktopGoesFirst)
{
    gnome("'file:///g'");
    kde("[Save]\ndefaultSaveLocation=file:///k\n");
    xfce("file:///x");
    environment.set("XDG_CURRENT_DESKTOP", QStringLiteral("KDE"));
    EXPECT_EQ(defaults.location(), QStringLiteral("/k"));
    environment.set("XDG_CURRENT_DESKTOP", QStringLiteral("ubuntu:GNOME"));
    EXPECT_EQ(defaults.location(), QStringLiteral("/g"));
    environment.set("XDG_CURRENT_DESKTOP", QStringLiteral("Xfce"));
    EXPECT_EQ(defaults.location(), QStringLiteral("/x"));
}

TEST_F(DesktopScreenshotDefaultsTest, AnotherConfiguredToolCountsElsewhere)
{
    xfce("/x/shots");
    environment.set("XDG_CURRENT_DESKTOP", QStringLiteral("sway"));
    EXPECT_EQ(defaults.location(), QStringLiteral("/x/shots"));
}

TEST_F(DesktopScreenshotDefaultsTest, NewerKeysOfOneToolGoFirst)
{
    environment.set("XDG_CURRENT_DESKTOP", QStringLiteral("KDE"));
    kde("[Save]\ndefaultSaveLocation=file:///old\n[ImageSave]\nimageSaveLocation[$e]=file:$HOME/new/\n");
    EXPECT_EQ(defaults.location(), folder.file(QStringLiteral("new")));
    kde("[Save]\ndefaultSaveLocation=file:///old\n[ImageSave]\nimageSaveLocation=file:///new/\n");
    EXPECT_EQ(defaults.location(), QStringLiteral("/new"));
}

TEST_F(DesktopScreenshotDefaultsTest, UrlsEscapesAndHomeAreResolved)
{
    const QList<std::pair<QByteArray, QString>> cases{
        {"file:///a%20b/%E6%88%AA", QStringLiteral("/a b/截")},
        {"file:/plain", QStringLiteral("/plain")},
        {"~/Shots", folder.file(QStringLiteral("Shots"))},
        {"$HOME/Shots/", folder.file(QStringLiteral("Shots"))},
        {"${HOME}", folder.path()},
        {"file://$HOME/Shots", folder.file(QStringLiteral("Shots"))},
        {"/with%20percent", QStringLiteral("/with%20percent")},
    };
    for (const auto& [text, path] : cases) {
        xfce(text);
        EXPECT_EQ(defaults.location(), path) << text.constData();
    }
}

TEST_F(DesktopScreenshotDefaultsTest, WhatIsNoFolderHereIsIgnored)
{
    for (const char* text : {"", "relative", "sftp://host/x", "file://", "~other/x"}) {
        xfce(text);
        EXPECT_EQ(defaults.location(), std::nullopt) << text;
    }
}

TEST_F(DesktopScreenshotDefaultsTest, TheScreenshotsAmongThePicturesAreTheLastResort)
{
    writeFile(folder.file(QStringLiteral("c/user-dirs.dirs")), "XDG_PICTURES_DIR=\"$HOME/图片\"\n");
    EXPECT_EQ(defaults.location(), std::nullopt);
    ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("图片/Screenshots"))));
    EXPECT_EQ(defaults.location(), folder.file(QStringLiteral("图片/Screenshots")));
}

} // namespace
} // namespace tessary
