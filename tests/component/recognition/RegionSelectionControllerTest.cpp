#include "recognition/RegionSelectionController.h"

#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeWindowEffects.h"
#include "recognition/RegionSelectionView.h"
#include "recognition/RegionSelectionWindow.h"
#include "tests/support/Await.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QScreen>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using SelectionCase = RegionSelector::SelectionError::Case;

class RegionSelectionControllerTest : public ::testing::Test {
protected:
    static RegionSelectionWindow* overlay()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<RegionSelectionWindow*>(widget); window && window->isVisible())
                return window;
        return nullptr;
    }
    static void drag(const QPoint& from, const QPoint& to)
    {
        RegionSelectionView& view = overlay()->view();
        QTest::mousePress(&view, Qt::LeftButton, {}, from);
        QTest::mouseMove(&view, (from + to) / 2);
        QTest::mouseMove(&view, to);
        QTest::mouseRelease(&view, Qt::LeftButton, {}, to);
    }
    static SelectionCase failure(QCoro::Task<RegionSelector::Selection> selecting)
    {
        try {
            await(std::move(selecting));
        } catch (const RegionSelector::SelectionError& error) {
            return error.which();
        }
        ADD_FAILURE() << "the selection did not fail";
        return {};
    }
    /// The colour of a pixel of the overlay as it is now.
    static QColor colourAt(const QPoint& point) { return overlay()->grab().toImage().pixelColor(point); }

    Theme theme;
    testing::FakeWindowEffects effects;
    testing::FakeClock clock;
    RegionSelectionController controller{theme, effects, clock};
};

TEST_F(RegionSelectionControllerTest, ADragIsTheSelectionWhereverItGoes)
{
    auto selecting = controller.begin({});
    ASSERT_NE(overlay(), nullptr);
    EXPECT_EQ(overlay()->geometry(), QGuiApplication::primaryScreen()->geometry());
    drag({300, 200}, {100, 150});
    const RegionSelector::Selection selection = await(std::move(selecting));
    EXPECT_EQ(selection.globalRect, QRectF(100, 150, 200, 50));
    EXPECT_EQ(selection.screen.name, QGuiApplication::primaryScreen()->name());
    EXPECT_EQ(overlay(), nullptr);
    EXPECT_EQ(effects.inputWindow, 0U);
}

TEST_F(RegionSelectionControllerTest, ADragOffTheScreenEndsAtItsEdge)
{
    auto selecting = controller.begin({});
    drag({100, 100}, {-50, 5000});
    const QRectF screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_EQ(await(std::move(selecting)).globalRect,
              QRectF(QPointF(screen.left(), 100), QPointF(100, screen.bottom())));
}

TEST_F(RegionSelectionControllerTest, AClickOrASlipCancels)
{
    auto click = controller.begin({});
    drag({100, 100}, {100, 100});
    EXPECT_EQ(failure(std::move(click)), SelectionCase::Cancelled);
    auto slip = controller.begin({});
    drag({100, 100}, {103, 300});
    EXPECT_EQ(failure(std::move(slip)), SelectionCase::Cancelled);
    auto smallest = controller.begin({});
    drag({100, 100}, {104, 104});
    EXPECT_EQ(await(std::move(smallest)).globalRect, QRectF(100, 100, 4, 4));
}

TEST_F(RegionSelectionControllerTest, EscapeCancelsAndSoDoesTheRightButton)
{
    auto escaped = controller.begin({});
    QTest::keyClick(overlay(), Qt::Key_A);
    EXPECT_TRUE(controller.isSelecting());
    QTest::keyClick(overlay(), Qt::Key_Escape);
    EXPECT_EQ(overlay(), nullptr);
    EXPECT_EQ(failure(std::move(escaped)), SelectionCase::Cancelled);
    auto clicked = controller.begin({});
    QTest::mousePress(&overlay()->view(), Qt::RightButton, {}, QPoint(10, 10));
    EXPECT_EQ(failure(std::move(clicked)), SelectionCase::Cancelled);
}

TEST_F(RegionSelectionControllerTest, ANewSelectionFinishesTheFormerOne)
{
    auto first = controller.begin({});
    auto second = controller.begin({});
    EXPECT_EQ(failure(std::move(first)), SelectionCase::Cancelled);
    ASSERT_NE(overlay(), nullptr);
    drag({10, 10}, {60, 60});
    EXPECT_EQ(await(std::move(second)).globalRect, QRectF(10, 10, 50, 50));
}

TEST_F(RegionSelectionControllerTest, AChangeOfTheScreenCancels)
{
    auto selecting = controller.begin({});
    Q_EMIT QGuiApplication::primaryScreen()->geometryChanged(QRect(0, 0, 300, 200));
    EXPECT_EQ(failure(std::move(selecting)), SelectionCase::Cancelled);
}

TEST_F(RegionSelectionControllerTest, WaitsForPointerAndKeyboardAndGivesUpAfterASecond)
{
    effects.isInputTaken = true;
    auto patient = controller.begin({});
    ASSERT_TRUE(eventually([&] { return clock.sleeping() == 1; }));
    effects.isInputTaken = false;
    clock.advance(std::chrono::milliseconds(20));
    EXPECT_EQ(effects.inputWindow, overlay()->winId());
    drag({10, 10}, {60, 60});
    await(std::move(patient));

    effects.isInputTaken = true;
    auto hopeless = controller.begin({});
    while (controller.isSelecting()) {
        ASSERT_TRUE(eventually([&] { return clock.sleeping() == 1; }));
        clock.advance(std::chrono::milliseconds(20));
        ASSERT_LT(effects.attempts, 100);
    }
    EXPECT_THROW(await(std::move(hopeless)), ScreenCaptureError);
    EXPECT_EQ(overlay(), nullptr);
}

TEST_F(RegionSelectionControllerTest, TheSelectionStaysBrighterThanItsSurroundings)
{
    QImage white(QGuiApplication::primaryScreen()->size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    auto selecting = controller.begin({{QGuiApplication::primaryScreen()->name(), white}});
    EXPECT_EQ(colourAt({20, 20}).lightness(), 184); // 28 % black
    RegionSelectionView& view = overlay()->view();
    QTest::mousePress(&view, Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseMove(&view, QPoint(300, 200));
    EXPECT_EQ(colourAt({200, 150}).lightness(), 184);
    EXPECT_NEAR(colourAt({20, 20}).lightness(), 184 * 0.52, 1);
    EXPECT_EQ(colourAt({100, 150}), theme.overlayOutline());
    EXPECT_LT(colourAt({102, 207}).lightness(), 90); // the label's plate, under the left edge
    controller.cancel();
    EXPECT_EQ(failure(std::move(selecting)), SelectionCase::Cancelled);
}

} // namespace
} // namespace tessary
