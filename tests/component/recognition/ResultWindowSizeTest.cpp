#include "tests/component/recognition/ResultWindowFixture.h"

#include <QCursor>
#include <QScreen>

#include <algorithm>

namespace tessary::testing {
namespace {

using ResultWindowSizeTest = ResultWindowFixture;

TEST_F(ResultWindowSizeTest, ANewResultTakesThePlaceOfTheOld)
{
    open(result(u"旧"_s));
    const QPointer<FramedWindow> old = controller.window();
    old->move(0, 0);
    open(result(u"新"_s));
    EXPECT_EQ(old, nullptr);
    EXPECT_EQ(view().text(), u"新"_s);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint off = controller.window()->bodyGeometry().center() - screen.center();
    EXPECT_LE(off.manhattanLength(), 2);
}

TEST_F(ResultWindowSizeTest, ItsBodyStaysWithinItsSizes)
{
    for (const bool composited : {false, true}) {
        effects.setComposited(composited);
        open(result(u"字"_s));
        FramedWindow* window = controller.window();
        EXPECT_EQ(window->bodyGeometry().size(), QSize(680, 400));
        window->resize(100, 100);
        EXPECT_EQ(window->bodyGeometry().size(), QSize(680, 400));
        window->resize(3000, 2000);
        EXPECT_EQ(window->bodyGeometry().size(), QSize(900, 620));
        EXPECT_EQ(window->mask().isEmpty(), composited);
    }
}

TEST_F(ResultWindowSizeTest, LargerTextMakesItGrowAndCoversNothing)
{
    open(task(u"请明天下午三点提交报销单"_s));
    for (const double scale : {1.5, 2.0, 1.0}) {
        theme.setTextScale(scale);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QRect body = controller.window()->bodyGeometry();
        EXPECT_TRUE(screen.contains(body)) << scale;
        EXPECT_GE(body.width(), std::min({theme.scaled(680), screen.width(), 900})) << scale;
        const QList<QWidget*> parts{named<QWidget>("copyAgain"),
                                    named<QWidget>("minimize"),
                                    named<QWidget>("close"),
                                    edit(),
                                    named<QWidget>("region"),
                                    status(),
                                    addButton()};
        QList<QRect> seen;
        for (const QWidget* part : parts) {
            const QRect place(part->mapTo(&view(), QPoint()), part->size());
            EXPECT_TRUE(view().rect().contains(place)) << scale << qPrintable(part->objectName());
            for (const QRect& before : seen)
                EXPECT_FALSE(before.intersects(place)) << scale << qPrintable(part->objectName());
            seen.append(place);
        }
        EXPECT_GE(status()->width(), status()->sizeHint().width()) << scale;
        EXPECT_GE(addButton()->height(), QFontMetrics(theme.font(Theme::kBodySize)).height()) << scale;
    }
}

TEST_F(ResultWindowSizeTest, TheEdgesShowThatTheyResize)
{
    open(result(u"字"_s));
    FramedWindow* window = controller.window();
    const auto cursorAt = [&](const QPoint& position) {
        QHoverEvent hover(QEvent::HoverMove, position, QPointF(position), QPointF());
        QApplication::sendEvent(window, &hover);
        return window->cursor().shape();
    };
    EXPECT_EQ(cursorAt({2, 200}), Qt::SizeHorCursor);
    EXPECT_EQ(cursorAt({340, 398}), Qt::SizeVerCursor);
    EXPECT_EQ(cursorAt({671, 391}), Qt::SizeFDiagCursor);
    EXPECT_EQ(cursorAt({678, 5}), Qt::SizeBDiagCursor);
    EXPECT_EQ(cursorAt({300, 20}), Qt::ArrowCursor);
}

TEST_F(ResultWindowSizeTest, OnlyTheBodyTakesThePointerWithACompositor)
{
    effects.setComposited(true);
    open(result(u"字"_s));
    ASSERT_TRUE(eventually([&] { return effects.inputRegion == controller.window()->body().geometry(); }));
    controller.window()->resize(controller.window()->maximumSize());
    EXPECT_TRUE(eventually([&] { return effects.inputRegion.size() == QSize(900, 620); }));
}

TEST_F(ResultWindowSizeTest, ItFloatsAndCanBeFoundAgainWhenMinimised)
{
    open(result(u"字"_s));
    EXPECT_TRUE(controller.window()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(effects.listed.value(controller.window()->winId()), QList<bool>{true});
    EXPECT_EQ(effects.activated, controller.window()->winId());
    named<QAbstractButton>("minimize")->click();
    EXPECT_TRUE(controller.window()->isMinimized());
}

} // namespace
} // namespace tessary::testing
