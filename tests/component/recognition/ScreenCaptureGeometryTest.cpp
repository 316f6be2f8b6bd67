#include "recognition/ScreenCaptureGeometry.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using ScreenCaptureGeometry::sourceRect;

TEST(ScreenCaptureGeometryTest, CountsFromTheTopLeftOfTheScreen)
{
    EXPECT_EQ(sourceRect({1920 + 30, 40, 100, 50}, {1920, 0, 1280, 800}, {1280, 800}),
              QRectF(30, 40, 100, 50));
    EXPECT_EQ(sourceRect({-1270, -290, 5, 6}, {-1280, -300, 1280, 800}, {1280, 800}), QRectF(10, 10, 5, 6));
}

TEST(ScreenCaptureGeometryTest, ScalesToTheUnitsOfThePicture)
{
    EXPECT_EQ(sourceRect({10, 20, 100, 50}, {0, 0, 640, 400}, {1280, 800}), QRectF(20, 40, 200, 100));
    EXPECT_EQ(sourceRect({10, 20, 100, 50}, {0, 0, 1000, 1000}, {500, 2000}), QRectF(5, 40, 50, 100));
}

TEST(ScreenCaptureGeometryTest, ClipsASelectionThatLiesPartlyOutside)
{
    EXPECT_EQ(sourceRect({-10, 780, 100, 50}, {0, 0, 1280, 800}, {1280, 800}), QRectF(0, 780, 90, 20));
    EXPECT_TRUE(sourceRect({1300, 0, 10, 10}, {0, 0, 1280, 800}, {1280, 800}).isEmpty());
}

TEST(ScreenCaptureGeometryTest, AScreenWithoutExtentHasNoPart)
{
    EXPECT_EQ(sourceRect({0, 0, 10, 10}, {0, 0, 0, 800}, {1280, 800}), QRectF());
    EXPECT_EQ(sourceRect({0, 0, 10, 10}, {0, 0, 1280, -1}, {1280, 800}), QRectF());
}

} // namespace
} // namespace tessary
