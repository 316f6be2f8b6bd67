#include "recognition/ScreenCaptureService.h"

#include "platform/testing/FakeClock.h"
#include "platform/testing/FakePermissions.h"
#include "platform/testing/FakeScreenCapture.h"
#include "recognition/OwnWindows.h"
#include "tests/support/Await.h"
#include "tests/support/FakeRegionSelector.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using Case = ScreenCaptureService::CaptureError::Case;

class FakeOwnWindows : public OwnWindows {
public:
    bool withdraw() override
    {
        ++withdrawn;
        return areShown;
    }
    void restore() override { ++restored; }

    bool areShown = false;
    int withdrawn = 0;
    int restored = 0;
};

/// A picture whose pixels tell where they are.
QImage coordinates(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, x / 256));
    return image;
}

class ScreenCaptureServiceTest : public ::testing::Test {
protected:
    ScreenCaptureServiceTest()
    {
        permissions.setState({true, true, true});
        screens.screens = {{QStringLiteral("left"), coordinates(640, 400)},
                           {QStringLiteral("right"), coordinates(800, 600)}};
        selector.selection = {left, QRectF(30, 40, 100, 50)};
    }
    Case failure(QCoro::Task<QImage> capture)
    {
        try {
            await(std::move(capture));
        } catch (const ScreenCaptureService::CaptureError& error) {
            return error.which();
        }
        ADD_FAILURE() << "no CaptureError was thrown";
        return {};
    }

    const RegionSelector::Screen left{QStringLiteral("left"), QRectF(0, 0, 640, 400), 1};
    const RegionSelector::Screen right{QStringLiteral("right"), QRectF(640, 0, 400, 300), 2};
    testing::FakeScreenCapture screens;
    testing::FakePermissions permissions;
    testing::FakeRegionSelector selector;
    FakeOwnWindows windows;
    testing::FakeClock clock;
    ScreenCaptureService service{screens, permissions, selector, windows, clock};
};

TEST_F(ScreenCaptureServiceTest, BringsTheSelectedPieceOfItsScreen)
{
    const QImage image = await(service.captureRegionImage());
    EXPECT_EQ(image, coordinates(640, 400).copy(30, 40, 100, 50));
    EXPECT_FALSE(service.isCapturing());
}

TEST_F(ScreenCaptureServiceTest, ASecondScreenGivesItsOwnPixelsInFullResolution)
{
    selector.selection = {right, QRectF(640 + 10, 20, 100, 50)};
    const QImage image = await(service.captureRegionImage());
    EXPECT_EQ(image.size(), QSize(200, 100));
    EXPECT_EQ(image.devicePixelRatio(), 2);
    QImage pixels = image;
    pixels.setDevicePixelRatio(1);
    EXPECT_EQ(pixels, coordinates(800, 600).copy(20, 40, 200, 100));
}

TEST_F(ScreenCaptureServiceTest, ASelectionPartlyOutsideIsClipped)
{
    selector.selection = {left, QRectF(600, 390, 100, 50)};
    EXPECT_EQ(await(service.captureRegionImage()).size(), QSize(40, 10));
}

TEST_F(ScreenCaptureServiceTest, FractionsOfPixelsAreCutOff)
{
    selector.selection = {right, QRectF(640 + 0.5, 0, 4.9, 4.4)};
    EXPECT_EQ(await(service.captureRegionImage()).size(), QSize(9, 8));
    selector.selection = {left, QRectF(639.7, 399.7, 0.3, 0.3)}; // slipped through
    EXPECT_EQ(await(service.captureRegionImage()).size(), QSize(1, 1));
}

TEST_F(ScreenCaptureServiceTest, ASecondStartFailsAtOnceAndLeavesTheFirstRunning)
{
    selector.gate.close();
    auto first = service.captureRegionImage();
    ASSERT_TRUE(eventually([&] { return selector.gate.waitingCount() == 1; }));
    EXPECT_EQ(failure(service.captureRegionImage()), Case::Busy);
    EXPECT_EQ(selector.begun, 1);
    selector.gate.open();
    EXPECT_EQ(await(std::move(first)).size(), QSize(100, 50));
    EXPECT_EQ(await(service.captureRegionImage()).size(), QSize(100, 50)); // free again
}

TEST_F(ScreenCaptureServiceTest, AsksForThePermissionOnceAndGivesUpWithoutIt)
{
    permissions.setState({});
    EXPECT_EQ(failure(service.captureRegionImage()), Case::PermissionDenied);
    EXPECT_EQ(permissions.requests(), QStringList(QStringLiteral("screen")));
    EXPECT_EQ(selector.begun, 0);
    EXPECT_EQ(screens.taken, 0);
    permissions.grantRequests();
    EXPECT_FALSE(await(service.captureRegionImage()).isNull());
}

TEST_F(ScreenCaptureServiceTest, OurWindowsAreAwayUntilTheirLastTraceIsGone)
{
    windows.areShown = true;
    auto capture = service.captureRegionImage();
    for (int look = 0; look < 5; ++look) { // fading out
        ASSERT_TRUE(eventually([&] { return clock.sleeping() == 1; }));
        screens.screens[0].image.setPixel(0, 0, qRgb(look, 1, 1));
        clock.advance(std::chrono::milliseconds(30));
    }
    for (int look = 0; selector.begun == 0; ++look) {
        ASSERT_LT(look, 5);
        ASSERT_TRUE(eventually([&] { return clock.sleeping() == 1 || selector.begun > 0; }));
        if (clock.sleeping() == 1)
            clock.advance(std::chrono::milliseconds(30));
    }
    await(std::move(capture));
    EXPECT_EQ(selector.pictures.first().image.pixel(0, 0), qRgb(4, 1, 1));
    EXPECT_EQ(windows.withdrawn, 1);
    EXPECT_EQ(windows.restored, 1);
}

TEST_F(ScreenCaptureServiceTest, AScreenThatNeverStandsStillIsTakenAsItIs)
{
    windows.areShown = true;
    auto capture = service.captureRegionImage();
    for (int look = 0; selector.begun == 0; ++look) {
        ASSERT_LT(look, 20);
        ASSERT_TRUE(eventually([&] { return clock.sleeping() == 1 || selector.begun > 0; }));
        screens.screens[0].image.setPixel(0, 0, qRgb(look, 1, 1));
        clock.advance(std::chrono::milliseconds(30));
    }
    EXPECT_FALSE(await(std::move(capture)).isNull());
}

TEST_F(ScreenCaptureServiceTest, WithoutWindowsNothingIsWaitedFor)
{
    await(service.captureRegionImage());
    EXPECT_EQ(screens.taken, 1);
}

TEST_F(ScreenCaptureServiceTest, ACancelledSelectionPassesOnAndBringsOurWindowsBack)
{
    selector.failure = RegionSelector::SelectionError::Case::Cancelled;
    EXPECT_THROW(await(service.captureRegionImage()), RegionSelector::SelectionError);
    EXPECT_EQ(windows.restored, 1);
    EXPECT_FALSE(service.isCapturing());
}

TEST_F(ScreenCaptureServiceTest, AScreenThatIsGoneOrSilentIsAnError)
{
    selector.selection = {{QStringLiteral("gone"), QRectF(0, 0, 640, 400), 1}, QRectF(0, 0, 10, 10)};
    EXPECT_EQ(failure(service.captureRegionImage()), Case::DisplayUnavailable);
    selector.selection = {left, QRectF(700, 0, 10, 10)};
    EXPECT_EQ(failure(service.captureRegionImage()), Case::DisplayUnavailable);
    selector.selection = {left, QRectF(0, 0, 10, 10)};
    screens.screens[0].image = QImage();
    EXPECT_EQ(failure(service.captureRegionImage()), Case::ImageUnavailable);
    screens.failure = ScreenCaptureError::Case::NotConnected;
    EXPECT_THROW(await(service.captureRegionImage()), ScreenCaptureError);
    EXPECT_EQ(windows.withdrawn, windows.restored);
}

TEST_F(ScreenCaptureServiceTest, ErrorsHaveTheirSentences)
{
    const auto sentence = [](Case which) {
        return ScreenCaptureService::CaptureError(which).localizedDescription();
    };
    EXPECT_EQ(sentence(Case::PermissionDenied),
              QStringLiteral("未获得屏幕录制权限；本地 OCR 需要此权限，剪贴板记录仍可继续使用"));
    EXPECT_EQ(sentence(Case::DisplayUnavailable), QStringLiteral("无法匹配所选区域的显示器"));
    EXPECT_EQ(sentence(Case::ImageUnavailable), QStringLiteral("ScreenCaptureKit 没有返回图片"));
    EXPECT_EQ(sentence(Case::Busy), QStringLiteral("已有本地 OCR 操作正在进行"));
}

} // namespace
} // namespace tessary
