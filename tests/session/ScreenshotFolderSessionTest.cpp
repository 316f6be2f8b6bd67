#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"

#include <QDir>

#include <fcntl.h>
#include <unistd.h>

namespace tessary::testing {

namespace {

/// What lands in the screenshot folder of the running program. An editor is installed for the person, which
/// is a window of the GTK client under its class.
class ScreenshotFolderSessionTest : public SessionTest {
protected:
    void SetUp() override
    {
        makeFolder();
        writeSettings({QStringLiteral("monitoredDirectory=") + shots()});
        writeFile(scratch(QStringLiteral("config/user-dirs.dirs")),
                  QStringLiteral("XDG_PICTURES_DIR=\"%1\"\n").arg(shots()).toUtf8());
        writeFile(scratch(QStringLiteral("data/applications/session-editor.desktop")),
                  "[Desktop Entry]\nType=Application\nName=Editor\nExec=editor\n"
                  "StartupWMClass=SessionEditor\n");
    }
    [[nodiscard]] QString shots() const { return scratch(QStringLiteral("shots")); }
    void makeFolder() const { ASSERT_TRUE(QDir().mkpath(shots())); }
    void startWatching()
    {
        launch();
        ASSERT_TRUE(tessary().printed(QStringLiteral("watching the screenshot folder")));
    }
    void showEditor()
    {
        const QString text = QStringLiteral("from the editor");
        gtk({QStringLiteral("--window"), QStringLiteral("SessionEditor"), QStringLiteral("--class"),
             QStringLiteral("SessionEditor"), QStringLiteral("--text"), text});
        ASSERT_TRUE(holdsText(text));
        EXPECT_EQ(library().text(text)->bundleIdentifier, QStringLiteral("session-editor"));
    }
    /// Under the name that the tool gives by itself.
    void takeScreenshot()
    {
        ChildProcess tool(QStringLiteral("gnome-screenshot"), {}, environment());
        ASSERT_EQ(tool.exitCode(), 0) << qPrintable(tool.output());
    }
    bool hasPictures(size_t count)
    {
        return eventually([&] { return library().pictures().size() == count; });
    }
    void save(const QString& name, const QByteArray& bytes) const { writeFile(shots() + u'/' + name, bytes); }
    static QByteArray shot(int number) { return pngOf(picture(40 + number, 30)); }
};

TEST_F(ScreenshotFolderSessionTest, AScreenshotByARealToolBelongsToTheProgramInFrontAlsoAfterARestart)
{
    startWatching();
    showEditor();
    takeScreenshot();
    ASSERT_TRUE(hasPictures(1));
    const LibraryItem first = library().pictures().front();
    EXPECT_TRUE(first.filename.startsWith(QStringLiteral("Screenshot"))) << qPrintable(first.filename);
    EXPECT_EQ(first.bundleIdentifier, QStringLiteral("session-editor"));
    EXPECT_EQ(first.appName, QStringLiteral("Editor"));
    EXPECT_EQ(first.duplicateCount, 1);
    EXPECT_EQ(readFile(first.libraryPath), readFile(first.originalPath));
    quit();
    const QByteArray log = readFile(root() + QStringLiteral("/FrontmostApps.json"));
    EXPECT_TRUE(log.contains("session-editor"));
    program(QStringLiteral("xterm"), {QStringLiteral("-geometry"), QStringLiteral("20x5+0+0")});
    takeScreenshot(); // with another program's window in it, which nobody watches now
    startWatching();
    ASSERT_TRUE(hasPictures(2));
    EXPECT_EQ(library().pictures().back().bundleIdentifier, QStringLiteral("session-editor"))
        << "the last that was known at that time";
}

TEST_F(ScreenshotFolderSessionTest, WhateverWayAFileLandsThereItIsOneItemOnce)
{
    save(QStringLiteral("Screenshot 0.png"), shot(0));
    startWatching();
    ASSERT_TRUE(hasPictures(1));
    save(QStringLiteral("Screenshot 1.png"), shot(1));
    writeFile(scratch(QStringLiteral("elsewhere.png")), shot(2));
    ASSERT_TRUE(
        QFile::rename(scratch(QStringLiteral("elsewhere.png")), shots() + QStringLiteral("/截屏 2.png")));
    ASSERT_TRUE(hasPictures(3));
    save(QStringLiteral(".part"), shot(3));
    ASSERT_EQ(::rename(QFile::encodeName(shots() + QStringLiteral("/.part")).constData(),
                       QFile::encodeName(shots() + QStringLiteral("/Screenshot 1.png")).constData()),
              0);
    ASSERT_TRUE(hasPictures(4));
    const QByteArray slow = shot(4);
    QFile file(shots() + QStringLiteral("/Screenshot 4.png"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (const char byte : slow.first(20)) {
        file.write(&byte, 1);
        EXPECT_FALSE(eventually([] { return false; }, std::chrono::milliseconds(50)));
    }
    file.write(slow.mid(20));
    file.close();
    ASSERT_TRUE(hasPictures(5));
    ASSERT_TRUE(keepsCopying());
    for (const LibraryItem& item : library().pictures())
        EXPECT_EQ(item.duplicateCount, 1) << qPrintable(item.filename);
}

TEST_F(ScreenshotFolderSessionTest, ABurstOfTwoHundredIsTwoHundredItems)
{
    startWatching();
    for (int i = 0; i < 200; ++i)
        save(QStringLiteral("Screenshot %1.png").arg(i), shot(i));
    ASSERT_TRUE(hasPictures(200));
    ASSERT_TRUE(keepsCopying());
    for (const LibraryItem& item : library().pictures())
        EXPECT_EQ(item.duplicateCount, 1) << qPrintable(item.filename);
}

TEST_F(ScreenshotFolderSessionTest, AFolderThatIsRemovedAndMadeAgainIsWatchedAgain)
{
    startWatching();
    save(QStringLiteral("Screenshot 1.png"), shot(1));
    ASSERT_TRUE(hasPictures(1));
    ASSERT_TRUE(QDir(shots()).removeRecursively());
    ASSERT_TRUE(tessary().printed(QStringLiteral("the screenshot folder is gone")));
    makeFolder();
    save(QStringLiteral("Screenshot 2.png"), shot(2));
    ASSERT_TRUE(hasPictures(2));
}

} // namespace

} // namespace tessary::testing
