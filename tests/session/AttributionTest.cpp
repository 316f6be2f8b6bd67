#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"

namespace tessary::testing {

namespace {

/// Who was in front when something was copied. Two programs are installed for the person: an editor
/// and a browser, which are windows of the GTK client under those classes.
class AttributionTest : public SessionTest {
protected:
    void SetUp() override
    {
        writeFile(scratch(QStringLiteral("icon.png")), pngOf(picture(256, 256)));
        install(QStringLiteral("session-editor"), QStringLiteral("测试编辑器"),
                QStringLiteral("SessionEditor"));
        install(QStringLiteral("org.example.Browser"), QStringLiteral("Browser"),
                QStringLiteral("SessionBrowser"));
    }

    void install(const QString& identifier, const QString& name, const QString& windowClass)
    {
        writeFile(scratch(QStringLiteral("data/applications/%1.desktop").arg(identifier)),
                  QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nIcon=%3\n"
                                 "StartupWMClass=%4\n")
                      .arg(name, identifier, scratch(QStringLiteral("icon.png")), windowClass)
                      .toUtf8());
    }

    /// Shows a window of that class and, once it is in front, copies the text.
    ChildProcess& copyIn(const QString& windowClass, const QString& text, const QStringList& more = {})
    {
        return gtk(QStringList{QStringLiteral("--window"), windowClass, QStringLiteral("--class"),
                               windowClass, QStringLiteral("--text"), text} +
                   more);
    }
};

TEST_F(AttributionTest, ACopyBelongsToTheProgramInFrontAndHasItsIcon)
{
    start();
    copyIn(QStringLiteral("SessionEditor"), QStringLiteral("from the editor"));
    ASSERT_TRUE(holdsText(QStringLiteral("from the editor")));
    const LibraryItem item = *library().text(QStringLiteral("from the editor"));
    EXPECT_EQ(item.appName, QStringLiteral("测试编辑器"));
    EXPECT_EQ(item.bundleIdentifier, QStringLiteral("session-editor"));
    const QByteArray icon = readFile(root() + QStringLiteral("/App Icons/%1.png").arg(item.id));
    EXPECT_EQ(QImage::fromData(icon, "PNG").size(), QSize(128, 128));
}

TEST_F(AttributionTest, TheNextProgramInFrontHasTheNextCopy)
{
    start();
    copyIn(QStringLiteral("SessionEditor"), QStringLiteral("one"));
    ASSERT_TRUE(holdsText(QStringLiteral("one")));
    copyIn(QStringLiteral("SessionBrowser"), QStringLiteral("two"));
    ASSERT_TRUE(holdsText(QStringLiteral("two")));
    EXPECT_EQ(library().text(QStringLiteral("one"))->bundleIdentifier, QStringLiteral("session-editor"));
    EXPECT_EQ(library().text(QStringLiteral("two"))->bundleIdentifier, QStringLiteral("org.example.Browser"));
}

TEST_F(AttributionTest, AWordCopiedInATerminalBelongsToTheTerminal)
{
    start();
    program(QStringLiteral("xterm"),
            {QStringLiteral("-xrm"), QStringLiteral("*selectToClipboard: true"), QStringLiteral("-geometry"),
             QStringLiteral("80x24+0+0"), QStringLiteral("-e"),
             QStringLiteral("echo terminalword; exec tail -f /dev/null")});
    // The window may be there before its text, so the double click is repeated until something came.
    const bool came = eventually([&] {
        ChildProcess click(QStringLiteral("xdotool"),
                           {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                            QStringLiteral("--class"), QStringLiteral("xterm"), QStringLiteral("mousemove"),
                            QStringLiteral("--window"), QStringLiteral("%1"), QStringLiteral("20"),
                            QStringLiteral("9"), QStringLiteral("click"), QStringLiteral("--repeat"),
                            QStringLiteral("2"), QStringLiteral("--delay"), QStringLiteral("30"),
                            QStringLiteral("1")});
        return click.exitCode() == 0 && library().text(QStringLiteral("terminalword")).has_value();
    });
    ASSERT_TRUE(came);
    const LibraryItem item = *library().text(QStringLiteral("terminalword"));
    EXPECT_EQ(item.appName, QStringLiteral("XTerm"));
    EXPECT_EQ(item.bundleIdentifier, QStringLiteral("debian-xterm"));
}

TEST_F(AttributionTest, AProgramWithoutADesktopFileIsKnownByItsWindows)
{
    start();
    copyIn(QStringLiteral("SessionUnknown"), QStringLiteral("from somewhere"));
    ASSERT_TRUE(holdsText(QStringLiteral("from somewhere")));
    const LibraryItem item = *library().text(QStringLiteral("from somewhere"));
    EXPECT_EQ(item.bundleIdentifier, QStringLiteral("SessionUnknown"));
    EXPECT_EQ(item.appName, QStringLiteral("SessionUnknown"));
}

TEST_F(AttributionTest, WhileOurPanelIsInFrontACopyBelongsToTheProgramBeforeIt)
{
    start();
    copyIn(QStringLiteral("SessionEditor"), QStringLiteral("from the editor"));
    ASSERT_TRUE(holdsText(QStringLiteral("from the editor")));
    const auto again = run(); // shows the panel of the first
    ASSERT_EQ(again->exitCode(), 0);
    const bool isInFront = eventually([&] {
        ChildProcess asking(QStringLiteral("xdotool"),
                            {QStringLiteral("getactivewindow"), QStringLiteral("getwindowpid")});
        return asking.exitCode() == 0 && asking.output().trimmed() == QString::number(tessary().processId());
    });
    ASSERT_TRUE(isInFront);
    copyText(QStringLiteral("by a script"));
    ASSERT_TRUE(holdsText(QStringLiteral("by a script")));
    EXPECT_EQ(library().text(QStringLiteral("by a script"))->bundleIdentifier,
              QStringLiteral("session-editor"));
}

TEST_F(AttributionTest, NothingOfAnExcludedProgramIsStored)
{
    writeSettings({QStringLiteral("excludedBundleIdentifiers=com.example.other, session-editor")});
    start();
    ChildProcess& editor = copyIn(QStringLiteral("SessionEditor"), QStringLiteral("not for keeping"),
                                  {QStringLiteral("--quit-after"), QStringLiteral("1000")});
    EXPECT_EQ(editor.exitCode(), 0);
    copyIn(QStringLiteral("SessionBrowser"), QStringLiteral("for keeping"));
    ASSERT_TRUE(holdsText(QStringLiteral("for keeping")));
    EXPECT_TRUE(holds(1));
    EXPECT_TRUE(filesHolding("not for keeping", scratch(QStringLiteral("data"))).isEmpty());
}

TEST_F(AttributionTest, TheNameOfAnExcludedProgramMustMatchExactly)
{
    writeSettings({QStringLiteral("excludedBundleIdentifiers=Session-Editor, session")});
    start();
    copyIn(QStringLiteral("SessionEditor"), QStringLiteral("kept after all"));
    EXPECT_TRUE(holdsText(QStringLiteral("kept after all")));
}

} // namespace

} // namespace tessary::testing
