#include "tests/session/panel/RegionSession.h"

#include <QJsonDocument>
#include <QProcess>

namespace tessary::testing {

namespace {

/// A screen that two monitors share side by side, each 900 × 1000 pixels.
class RegionScreensTest : public RegionSession {
protected:
    static void xrandr(const QStringList& arguments)
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
    }
    /// The size of the picture that a drag makes, from what is read in it.
    QSize captured(const QPoint& from, const QPoint& to)
    {
        const auto recognizing = run({QStringLiteral("recognize"), QStringLiteral("--json")});
        EXPECT_TRUE(overlayComes());
        drag(from, to);
        EXPECT_EQ(recognizing->exitCode(), 0);
        const QJsonDocument result = QJsonDocument::fromJson(recognizing->output().toUtf8());
        EXPECT_EQ(result[QStringLiteral("text")].toString(), QStringLiteral("On the right"));
        return {result[QStringLiteral("width")].toInt(), result[QStringLiteral("height")].toInt()};
    }
};

TEST_F(RegionScreensTest, ASelectionIsOfTheScreenWhereItBegan)
{
    const QRect page = openPage("On the right", {960, 300});
    startWithPanel();
    EXPECT_EQ(captured(page.topLeft(), page.topLeft() + QPoint(300, 60)), QSize(300, 60));
    // The other screen ends it, wherever the pointer began.
    movePointer({100, 100});
    EXPECT_EQ(captured(page.topLeft() + QPoint(300, 60), {100, page.top()}),
              QSize(page.left() + 300 - 900, 60));
}

TEST_F(RegionScreensTest, EveryScreenHasPixelsOfItsOwnSize)
{
    environment().insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"), QStringLiteral("1;2"));
    const QRect page = openPage("On the right", {960, 300});
    startWithPanel();
    const QPoint begin(page.left() + page.left() % 2, page.top() + page.top() % 2);
    EXPECT_EQ(captured(begin, begin + QPoint(300, 60)), QSize(300, 60));
}

TEST_F(RegionScreensTest, EscapeOnAnyScreenEndsItOnAll)
{
    startWithPanel();
    const QString problem = lastError();
    for (const QPoint place : {QPoint(100, 500), QPoint(1500, 500)}) {
        movePointer(place);
        pressCaptureShortcut();
        ASSERT_TRUE(overlayComes());
        press("Escape");
        ASSERT_TRUE(overlayGoes());
    }
    EXPECT_EQ(lastError(), problem);
}

TEST_F(RegionScreensTest, AScreenThatGoesMeanwhileEndsIt)
{
    startWithPanel();
    const QString problem = lastError();
    pressCaptureShortcut();
    ASSERT_TRUE(overlayComes());
    xrandr({QStringLiteral("--delmonitor"), QStringLiteral("right")});
    EXPECT_TRUE(overlayGoes());
    EXPECT_EQ(lastError(), problem);
    xrandr({QStringLiteral("--setmonitor"), QStringLiteral("right"), QStringLiteral("900/225x1000/250+900+0"),
            QStringLiteral("none")});
}

} // namespace

} // namespace tessary::testing
