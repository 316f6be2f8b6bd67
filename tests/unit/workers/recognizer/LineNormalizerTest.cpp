#include "workers/recognizer/LineNormalizer.h"
#include "workers/recognizer/CubicScaling.h"

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

/// A line of 60 x 10 with a stroke of 4 x 10 at the left and at the right. The right half has colours of its
/// own.
GreyPlane darkOnWhiteOf(quint32 leftGround, quint32 leftInk, quint32 rightGround, quint32 rightInk)
{
    constexpr int kWidth = 120;
    constexpr int kHeight = 20;
    std::vector<quint32> pixels(size_t{kWidth} * kHeight);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const bool ink = y >= 5 && y < 15 && (x % 60) >= 28 && (x % 60) < 32;
            const bool left = x < 60;
            pixels[size_t(y) * kWidth + size_t(x)] =
                left ? (ink ? leftInk : leftGround) : (ink ? rightInk : rightGround);
        }
    return darkOnWhite({pixels.data(), kWidth, kHeight}, {.box = QRect(10, 5, 100, 10)});
}

/// The ink in the middle of both strokes, and the ground between.
void expectDarkStrokesOnWhite(const GreyPlane& plane)
{
    constexpr int kLeft = 30 - 8;
    constexpr int kRight = 90 - 8;
    const uchar* row = plane.row(plane.height / 2);
    EXPECT_LT(row[kLeft], 40);
    EXPECT_LT(row[kRight], 40);
    EXPECT_GT(row[kLeft + 10], 240);
    EXPECT_GT(row[kRight - 10], 240);
}

TEST(LineNormalizerTest, KeepsDarkOnLight)
{
    expectDarkStrokesOnWhite(darkOnWhiteOf(0xffffffff, 0xff202020, 0xffffffff, 0xff202020));
}

TEST(LineNormalizerTest, TurnsLightOnDark)
{
    expectDarkStrokesOnWhite(darkOnWhiteOf(0xff1e1e1e, 0xffd0d0d0, 0xff1e1e1e, 0xffd0d0d0));
}

TEST(LineNormalizerTest, FollowsColoursThatChangeAlongTheLine)
{
    expectDarkStrokesOnWhite(darkOnWhiteOf(0xffffffff, 0xff202020, 0xff2050a0, 0xffffffff));
}

TEST(LineNormalizerTest, StretchesFaintText)
{
    expectDarkStrokesOnWhite(darkOnWhiteOf(0xffffffff, 0xffb0b0b0, 0xffffffff, 0xffb0b0b0));
}

TEST(LineNormalizerTest, ScalesTheInkToTheHeightThatTheEngineWants)
{
    const std::vector<quint32> pixels(size_t{200} * 40, 0xffffffff);
    const GreyPlane plane = normalized({pixels.data(), 200, 40}, {.box = QRect(20, 10, 100, 18)});
    EXPECT_NEAR(plane.height, 36 + 2 * 12 + 4, 2);
    EXPECT_NEAR(plane.width, 200 + 2 * 12 + 8, 3);
}

TEST(LineNormalizerTest, StaysInsideThePicture)
{
    const std::vector<quint32> pixels(size_t{6} * 5, 0xff000000);
    EXPECT_FALSE(normalized({pixels.data(), 6, 5}, {.box = QRect(0, 0, 6, 5)}).isEmpty());
}

TEST(CubicScalingTest, KeepsAPlainPicturePlainAtEverySize)
{
    const GreyPlane grey(7, 5, 130);
    for (const auto& [width, height] : {std::pair{1, 1}, {3, 20}, {50, 2}, {7, 5}}) {
        const GreyPlane result = scaled(grey, width, height);
        ASSERT_EQ(result.width, width);
        ASSERT_EQ(result.height, height);
        for (const uchar value : result.pixels)
            EXPECT_EQ(value, 130);
    }
}

} // namespace
} // namespace tessary::recognizer
