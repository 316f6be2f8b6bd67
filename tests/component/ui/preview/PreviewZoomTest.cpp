#include "ui/preview/PreviewZoom.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(PreviewZoomTest, FiveStepsOutFromTheResetEndAtTheSmallest)
{
    double scale = PreviewZoom::kReset;
    for (const double expected : {0.8, 0.6, 0.4, 0.25, 0.25}) {
        scale = PreviewZoom::smaller(scale);
        EXPECT_EQ(scale, expected); // exactly: no rest of binary fractions
    }
}

TEST(PreviewZoomTest, NearTheLargestAStepEndsThereAndStays)
{
    EXPECT_EQ(PreviewZoom::larger(3.9), 4.0);
    EXPECT_EQ(PreviewZoom::larger(4.0), 4.0);
}

TEST(PreviewZoomTest, AllTheWayInAndBackPassesTheReset)
{
    double scale = PreviewZoom::kReset;
    for (int i = 0; i < 10; ++i)
        scale = PreviewZoom::larger(scale);
    EXPECT_EQ(scale, 3.0);
    for (int i = 0; i < 10; ++i)
        scale = PreviewZoom::smaller(scale);
    EXPECT_EQ(scale, 1.0);
}

TEST(PreviewZoomTest, FingersStayWithinTheLimits)
{
    EXPECT_EQ(PreviewZoom::moved(1, 100), 4.0);
    EXPECT_EQ(PreviewZoom::moved(1, 0.001), 0.25);
    EXPECT_EQ(PreviewZoom::moved(1, 1.5), 1.5);
}

TEST(PreviewZoomTest, ThePercentIsAWholeNumber)
{
    EXPECT_EQ(PreviewZoom::percentText(1), QStringLiteral("100%"));
    EXPECT_EQ(PreviewZoom::percentText(0.25), QStringLiteral("25%"));
    EXPECT_EQ(PreviewZoom::percentText(1.2 + 0.2 + 0.2), QStringLiteral("160%"));
}

} // namespace
} // namespace tessary
