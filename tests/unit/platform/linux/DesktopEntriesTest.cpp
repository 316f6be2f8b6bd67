#include "platform/linux/DesktopEntries.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

#include <sys/stat.h>

namespace tessary {
namespace {

using testing::writeFile;

class DesktopEntriesTest : public ::testing::Test {
protected:
    void install(const QString& file, const QByteArray& lines,
                 const QString& dataFolder = QStringLiteral("system"))
    {
        writeFile(folder.file(dataFolder + QStringLiteral("/applications/") + file),
                  "[Desktop Entry]\nType=Application\n" + lines);
    }
    DesktopEntries entries(const QString& locale = QStringLiteral("C"))
    {
        return DesktopEntries({folder.file(QStringLiteral("own")), folder.file(QStringLiteral("system"))},
                              locale);
    }
    QString found(const WindowIdentity& window)
    {
        const auto entry = entries().find(window);
        return entry ? entry->id : QString();
    }

    testing::TemporaryFolder folder;
};

TEST_F(DesktopEntriesTest, ReadsTheFieldsOfAnEntry)
{
    install(QStringLiteral("org.example.Editor.desktop"),
            "Name=Editor\nIcon=editor\nExec=env A=1 \"/opt/my apps/ed\" --new %F\nTryExec=/opt/ed\n"
            "StartupWMClass=Ed\nCategories=Utility;TextEditor;\n[Desktop Action x]\nName=Other\n");
    const auto entry = entries().byId(QStringLiteral("org.example.Editor"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, QStringLiteral("Editor"));
    EXPECT_EQ(entry->icon, QStringLiteral("editor"));
    EXPECT_EQ(entry->executable, QStringLiteral("/opt/my apps/ed"));
    EXPECT_EQ(entry->tryExecutable, QStringLiteral("/opt/ed"));
    EXPECT_EQ(entry->startupWMClass, QStringLiteral("Ed"));
    EXPECT_EQ(entry->categories, (QStringList{QStringLiteral("Utility"), QStringLiteral("TextEditor")}));
    EXPECT_TRUE(entry->path.endsWith(QStringLiteral("/system/applications/org.example.Editor.desktop")));
}

TEST_F(DesktopEntriesTest, TakesTheNameOfThePersonsLanguage)
{
    install(QStringLiteral("a.desktop"),
            "Name=Files\nName[zh]=文件\nName[zh_TW]=檔案\nName[sr@latin]=Datoteke\n");
    const auto name = [this](const char* locale) {
        return entries(QString::fromLatin1(locale)).byId(QStringLiteral("a"))->name;
    };
    EXPECT_EQ(name("zh_CN.UTF-8"), QStringLiteral("文件"));
    EXPECT_EQ(name("zh_TW.UTF-8"), QStringLiteral("檔案"));
    EXPECT_EQ(name("sr_RS.UTF-8@latin"), QStringLiteral("Datoteke"));
    EXPECT_EQ(name("de_DE"), QStringLiteral("Files"));
    EXPECT_EQ(name(""), QStringLiteral("Files"));
}

TEST_F(DesktopEntriesTest, LooksAtApplicationIdThenStartupClassThenClassThenExecutable)
{
    install(QStringLiteral("by.Id.desktop"), "Name=1\n");
    install(QStringLiteral("by-startup.desktop"), "Name=2\nStartupWMClass=Klass\n");
    install(QStringLiteral("klass.desktop"), "Name=3\n");
    install(QStringLiteral("by-program.desktop"), "Name=4\nExec=/usr/bin/program %U\n");
    WindowIdentity window{QStringLiteral("by.Id"), QStringLiteral("inst"), QStringLiteral("Klass"),
                          QStringLiteral("/usr/bin/program")};
    EXPECT_EQ(found(window), QStringLiteral("by.Id"));
    window.applicationId.clear();
    EXPECT_EQ(found(window), QStringLiteral("by-startup"));
    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("system/applications/by-startup.desktop"))));
    EXPECT_EQ(found(window), QStringLiteral("klass"));
    window.windowClass = QStringLiteral("unheard");
    EXPECT_EQ(found(window), QStringLiteral("by-program"));
    window.executable = QStringLiteral("/opt/unheard");
    EXPECT_EQ(found(window), QString());
}

TEST_F(DesktopEntriesTest, FindsByInstanceAndRegardlessOfCase)
{
    install(QStringLiteral("debian-xterm.desktop"), "Name=XTerm\nStartupWMClass=XTerm\nExec=xterm\n");
    install(QStringLiteral("org.gnome.Nautilus.desktop"), "Name=Files\n");
    EXPECT_EQ(found({.instance = QStringLiteral("xterm"), .windowClass = QStringLiteral("other")}),
              QStringLiteral("debian-xterm"));
    EXPECT_EQ(found({.windowClass = QStringLiteral("Org.gnome.Nautilus")}),
              QStringLiteral("org.gnome.Nautilus"));
}

TEST_F(DesktopEntriesTest, AReplacedProgramIsStillKnownByItsFile)
{
    install(QStringLiteral("p.desktop"), "Name=P\nExec=program\n");
    EXPECT_EQ(found({.executable = QStringLiteral("/usr/bin/program (deleted)")}), QStringLiteral("p"));
}

TEST_F(DesktopEntriesTest, AnInterpreterSaysNothingAboutTheProgram)
{
    install(QStringLiteral("python3.11.desktop"), "Name=Python\nExec=/usr/bin/python3.11\n");
    install(QStringLiteral("script.desktop"), "Name=Script\nExec=python3 /opt/script.py\n");
    install(QStringLiteral("boxed.desktop"), "Name=Boxed\nExec=/usr/bin/flatpak run org.Boxed\n");
    EXPECT_EQ(found({.executable = QStringLiteral("/usr/bin/python3.11")}), QString());
    EXPECT_EQ(found({.executable = QStringLiteral("/usr/bin/flatpak")}), QString());
}

TEST_F(DesktopEntriesTest, SubfoldersBecomeDashes)
{
    install(QStringLiteral("kde/deep/tool.desktop"), "Name=Tool\n");
    EXPECT_TRUE(entries().byId(QStringLiteral("kde-deep-tool")));
}

TEST_F(DesktopEntriesTest, ThePersonsOwnFileShadowsTheSystems)
{
    install(QStringLiteral("a.desktop"), "Name=System\n");
    install(QStringLiteral("a.desktop"), "Name=Own\n", QStringLiteral("own"));
    EXPECT_EQ(entries().byId(QStringLiteral("a"))->name, QStringLiteral("Own"));
}

TEST_F(DesktopEntriesTest, AHiddenFileTakesTheProgramAway)
{
    install(QStringLiteral("a.desktop"), "Name=System\nStartupWMClass=A\n");
    writeFile(folder.file(QStringLiteral("own/applications/a.desktop")), "[Desktop Entry]\nHidden=true\n");
    EXPECT_EQ(entries().byId(QStringLiteral("a")), std::nullopt);
    EXPECT_EQ(found({.windowClass = QStringLiteral("A")}), QString());
}

TEST_F(DesktopEntriesTest, AProgramNotInMenusIsFoundAfterThoseInMenus)
{
    install(QStringLiteral("a-handler.desktop"), "Name=Handler\nExec=tool --url\nNoDisplay=true\n");
    EXPECT_EQ(found({.executable = QStringLiteral("/bin/tool")}), QStringLiteral("a-handler"));
    install(QStringLiteral("z-tool.desktop"), "Name=Tool\nExec=tool\n");
    EXPECT_EQ(found({.executable = QStringLiteral("/bin/tool")}), QStringLiteral("z-tool"));
}

TEST_F(DesktopEntriesTest, NoticesProgramsThatComeAndGo)
{
    install(QStringLiteral("sub/first.desktop"), "Name=First\n");
    DesktopEntries programs = entries();
    EXPECT_TRUE(programs.byId(QStringLiteral("sub-first")));
    install(QStringLiteral("sub/second.desktop"), "Name=Second\n");
    EXPECT_TRUE(programs.byId(QStringLiteral("sub-second")));
    install(QStringLiteral("own.desktop"), "Name=Own\n", QStringLiteral("own"));
    EXPECT_TRUE(programs.byId(QStringLiteral("own")));
    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("system/applications/sub/first.desktop"))));
    EXPECT_FALSE(programs.byId(QStringLiteral("sub-first")));
}

TEST_F(DesktopEntriesTest, GarbageAndOddFilesAreSkipped)
{
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise.append(static_cast<char>(i * 131 % 256));
    writeFile(folder.file(QStringLiteral("system/applications/noise.desktop")), noise);
    writeFile(folder.file(QStringLiteral("system/applications/empty.desktop")), "");
    install(QStringLiteral("huge.desktop"), "Name=Huge\nX=" + QByteArray(2 * 1024 * 1024, 'x'));
    const QString pipe = folder.file(QStringLiteral("system/applications/pipe.desktop"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString system = folder.file(QStringLiteral("system/applications"));
    ASSERT_TRUE(QFile::link(system, system + QStringLiteral("/loop")));
    writeFile(system + QStringLiteral("/link.desktop"), "[Desktop Entry]\nType=Link\nName=L\n");
    install(QStringLiteral("good.desktop"), "Name=Good\nExec=\"unclosed\nIcon\n===\n");
    for (const char* id : {"noise", "empty", "huge", "pipe", "link"})
        EXPECT_EQ(entries().byId(QString::fromLatin1(id)), std::nullopt) << id;
    EXPECT_TRUE(entries().byId(QStringLiteral("good")));
}

TEST_F(DesktopEntriesTest, AWindowOfWhichNothingIsKnownMatchesNothing)
{
    install(QStringLiteral("a.desktop"), "Name=A\n");
    EXPECT_EQ(found({}), QString());
}

} // namespace
} // namespace tessary
