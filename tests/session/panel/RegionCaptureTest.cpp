#include "tests/session/panel/RegionSession.h"

namespace tessary::testing {

namespace {

class RegionCaptureTest : public RegionSession {};

TEST_F(RegionCaptureTest, TheTextUnderTheDragComesToTheClipboard)
{
    const QRect page = openPage("Meeting on Tuesday");
    startWithPanel();
    ASSERT_TRUE(keepsCopying()); // so that the clipboard is that of another program
    pressCaptureShortcut();
    ASSERT_TRUE(overlayComes());
    drag(page.topLeft(), page.bottomRight());
    ASSERT_TRUE(overlayGoes());
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("Meeting on Tuesday"); }))
        << qPrintable(clipboard());
    EXPECT_TRUE(holdsText(QStringLiteral("Meeting on Tuesday")));
}

TEST_F(RegionCaptureTest, EscapeEndsItWithoutATrace)
{
    openPage("nothing");
    startWithPanel();
    ASSERT_TRUE(keepsCopying());
    const QString before = clipboard();
    const QString problem = lastError();
    pressCaptureShortcut();
    ASSERT_TRUE(overlayComes());
    press("Escape");
    ASSERT_TRUE(overlayGoes());
    EXPECT_EQ(clipboard(), before);
    EXPECT_EQ(lastError(), problem);
    EXPECT_TRUE(isInFront(kPage)); // and it has the keyboard as before
}

TEST_F(RegionCaptureTest, AClickAndASlipEndItToo)
{
    startWithPanel();
    const QString problem = lastError();
    for (const QPoint slip : {QPoint(0, 0), QPoint(2, 150)}) {
        pressCaptureShortcut();
        ASSERT_TRUE(overlayComes());
        drag({200, 200}, QPoint(200, 200) + slip);
        ASSERT_TRUE(overlayGoes());
        EXPECT_EQ(lastError(), problem);
    }
}

TEST_F(RegionCaptureTest, KeysAndClicksReachNobodyElse)
{
    openPage("nothing");
    startWithPanel();
    pressCaptureShortcut();
    ASSERT_TRUE(overlayComes());
    press("ctrl+alt+space"); // the panel's
    press("a");
    EXPECT_FALSE(isShown());
    press("Escape");
    ASSERT_TRUE(overlayGoes());
    EXPECT_TRUE(opensPanel());
}

TEST_F(RegionCaptureTest, ASecondStartIsRefusedAndTheFirstGoesOn)
{
    const QRect page = openPage("Still there");
    startWithPanel();
    pressCaptureShortcut();
    ASSERT_TRUE(overlayComes());
    const auto second = run({QStringLiteral("recognize")});
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_EQ(second->output().trimmed(), QStringLiteral("tessary: 已有本地 OCR 操作正在进行"));
    drag(page.topLeft(), page.bottomRight());
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("Still there"); }))
        << qPrintable(clipboard());
}

TEST_F(RegionCaptureTest, OurOwnWindowsAreNotInThePictureAndComeBack)
{
    set(QStringLiteral("quickSearchPinned=true"));
    const QRect page = openPage("Beneath the panel", {450, 300});
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    const QRect panel = panelGeometry();
    ASSERT_TRUE(panel.contains(page));
    const auto recognizing = run({QStringLiteral("recognize")});
    ASSERT_TRUE(overlayComes());
    EXPECT_FALSE(isShown());
    drag(page.topLeft(), page.bottomRight());
    EXPECT_EQ(recognizing->exitCode(), 0);
    EXPECT_EQ(recognizing->output(), QStringLiteral("Beneath the panel\n"));
    EXPECT_TRUE(eventually([this] { return isShown(); }));
    EXPECT_EQ(panelGeometry(), panel);
}

TEST_F(RegionCaptureTest, ASizeOnThePictureAsOnTheScreen)
{
    startWithPanel();
    const auto recognizing = run({QStringLiteral("recognize"), QStringLiteral("--json")});
    ASSERT_TRUE(overlayComes());
    drag({100, 100}, {400, 250}); // of an empty desktop
    EXPECT_EQ(recognizing->exitCode(), 1);
    EXPECT_EQ(recognizing->output(), QStringLiteral("tessary: OCR 未返回结果\n"));
}

} // namespace

} // namespace tessary::testing
