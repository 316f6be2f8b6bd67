#include "recognition/SuccessBubble.h"

#include "tests/support/Await.h"
#include "ui/kit/Theme.h"

#include <QElapsedTimer>

namespace tessary::testing {
namespace {

TEST(SuccessBubbleTest, ItStaysForThreeAndAHalfSeconds)
{
    Theme theme;
    theme.setReducedMotion(true);
    QWidget window;
    SuccessBubble bubble(theme, &window);
    window.show();
    QElapsedTimer timer;
    timer.start();
    bubble.appear();
    EXPECT_TRUE(bubble.isVisible());
    ASSERT_TRUE(eventually([&] { return !bubble.isVisible(); }));
    EXPECT_GE(timer.elapsed(), 3490);
    EXPECT_FALSE(bubble.isPresent());
}

TEST(SuccessBubbleTest, ItSpringsInAndFadesAway)
{
    const Theme theme;
    QWidget window;
    window.resize(400, 100);
    SuccessBubble bubble(theme, &window);
    bubble.place(400);
    window.show();
    bubble.appear();
    const auto painted = [&] { return bubble.grab().toImage(); };
    const QImage first = painted();
    EXPECT_TRUE(eventually([&] { return painted() != first; }));
    ASSERT_TRUE(eventually([&] { return !bubble.isPresent(); }));
    EXPECT_TRUE(bubble.isVisible()); // still fading
    EXPECT_TRUE(eventually([&] { return !bubble.isVisible(); }));
}

TEST(SuccessBubbleTest, HidingItEndsItsTime)
{
    const Theme theme;
    QWidget window;
    SuccessBubble bubble(theme, &window);
    window.show();
    bubble.appear();
    window.hide();
    EXPECT_FALSE(bubble.isPresent());
}

TEST(SuccessBubbleTest, TheSpringSwingsBeyondItsGoalALittleAndSettles)
{
    constexpr SpringCurve kSpring{0.34, 0.82};
    EXPECT_NEAR(kSpring.at(0), 0, 1e-9);
    double highest = 0;
    for (double time = 0; time < 1; time += 0.001)
        highest = std::max(highest, kSpring.at(time));
    EXPECT_GT(highest, 1.005);
    EXPECT_LT(highest, 1.02);
    const double settled = std::chrono::duration<double>(kSpring.settlingTime()).count();
    EXPECT_LT(settled, 0.7);
    EXPECT_NEAR(kSpring.at(settled), 1, 0.001);
    EXPECT_NEAR((SpringCurve{0.3, 1}.at(2)), 1, 0.001);
}

} // namespace
} // namespace tessary::testing
