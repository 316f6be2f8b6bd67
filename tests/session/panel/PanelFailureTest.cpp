#include "tests/session/TestPictures.h"
#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

#include <QDir>

#include <csignal>

namespace tessary::testing {

namespace {

/// The process of this desktop's window manager; 0 when there is none.
pid_t windowManager()
{
    const QByteArray ours = "RIG_DIR=" + qgetenv("RIG_DIR");
    const QList<QByteArray> names{"openbox\n", "xfwm4\n", "kwin_x11\n"};
    const auto contents = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QString place = QStringLiteral("/proc/%1/").arg(process);
        if (names.contains(contents(place + QLatin1String("comm"))) &&
            contents(place + QLatin1String("environ")).split('\0').contains(ours))
            return process.toInt();
    }
    return 0;
}

class PanelFailureTest : public PanelSession {
protected:
    void startWithItem()
    {
        prepare({textRecord(QStringLiteral("the item"))});
        startWithPanel();
    }
};

TEST_F(PanelFailureTest, ATargetThatWasClosedLeavesTheItemOnTheClipboardAndThePanelSaysSo)
{
    startWithItem();
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(1));
    target.process().kill(SIGKILL);
    ASSERT_TRUE(comes());
    press("Return");
    EXPECT_TRUE(tessary().printed(QStringLiteral("内容已复制，但无法切回原来的 App 完成粘贴")));
    EXPECT_TRUE(comes());
    EXPECT_EQ(clipboard(), QStringLiteral("the item"));
}

TEST_F(PanelFailureTest, WithNothingInFrontBeforeThereIsNothingToPasteInto)
{
    startWithItem();
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(1));
    press("Return");
    EXPECT_TRUE(tessary().printed(QStringLiteral("无法切回原来的 App")));
    EXPECT_TRUE(comes());
    EXPECT_EQ(clipboard(), QStringLiteral("the item"));
}

TEST_F(PanelFailureTest, ATargetThatHangsDoesNotHoldUpThePanel)
{
    startWithItem();
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(1));
    target.process().kill(SIGSTOP);
    press("Return");
    EXPECT_TRUE(goes());
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("the item"); }));
    open(PasteTarget::Kind::Qt, "other");
    ASSERT_TRUE(opensPanel());
    type(QStringLiteral("still quick"));
    EXPECT_EQ(cutField(), QStringLiteral("still quick"));
    target.process().kill(SIGCONT);
}

TEST_F(PanelFailureTest, AWindowManagerThatIsBusyIsWaitedFor)
{
    startWithItem();
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(1));
    const pid_t manager = windowManager();
    ASSERT_GT(manager, 0);
    ::kill(manager, SIGSTOP);
    press("Return");
    EXPECT_FALSE(eventually([this] { return tessary().output().contains(QStringLiteral("无法切回原来的")); },
                            std::chrono::seconds(1)));
    ::kill(manager, SIGCONT);
    EXPECT_TRUE(arrives(target, QStringLiteral("the item")));
    EXPECT_TRUE(goes());
}

TEST_F(PanelFailureTest, APictureWhoseFileIsGoneLeavesTheClipboardAsItWas)
{
    writeFile(scratch(QStringLiteral("a.png")), pngOf(picture(60, 40)));
    startWithPanel();
    copyPng(scratch(QStringLiteral("a.png")));
    ASSERT_TRUE(holds(1));
    ASSERT_TRUE(QFile::remove(library().pictures().front().libraryPath));
    copyText(QStringLiteral("before"));
    ASSERT_TRUE(holdsText(QStringLiteral("before")));
    ASSERT_TRUE(lists(2));
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(2));
    press("Down");
    press("Return");
    EXPECT_TRUE(tessary().printed(QStringLiteral("无法将内容写入剪贴板")));
    EXPECT_TRUE(comes());
    EXPECT_EQ(clipboard(), QStringLiteral("before"));
    EXPECT_EQ(target.text(), QString());
}

} // namespace

} // namespace tessary::testing
