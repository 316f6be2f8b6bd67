#include "recognition/RegionPicture.h"

#include "tests/support/Await.h"
#include "ui/kit/Theme.h"

namespace tessary::testing {
namespace {

constexpr QSize kRoom{250, 264};

QImage region(int width, int height, qreal ratio = 1)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::darkCyan);
    return image;
}

QSize shownSize(const QImage& image)
{
    const Theme theme;
    RegionPicture picture(theme, image);
    picture.resize(kRoom);
    return picture.pictureGeometry().size();
}

TEST(RegionPictureTest, APictureIsNeverEnlarged)
{
    EXPECT_EQ(shownSize(region(16, 16)), QSize(16, 16));
    EXPECT_EQ(shownSize(region(1, 1)), QSize(1, 1));
    EXPECT_EQ(shownSize(region(100, 60, 2)), QSize(50, 30));
}

TEST(RegionPictureTest, ALargePictureIsFittedInItsProportions)
{
    EXPECT_EQ(shownSize(region(452, 100)), QSize(226, 50));
    EXPECT_EQ(shownSize(region(8000, 200)), QSize(226, 6));
    EXPECT_EQ(shownSize(region(20, 8000)), QSize(1, 240));
}

TEST(RegionPictureTest, ALargePictureIsScaledSmoothlyForTheScreen)
{
    const Theme theme;
    RegionPicture picture(theme, region(8000, 200));
    picture.resize(kRoom);
    picture.show();
    ASSERT_TRUE(eventually([&] { return picture.scaled().size() == QSize(226, 6); }));
    EXPECT_EQ(picture.scaled().pixelColor(100, 3), QColor(Qt::darkCyan));
}

TEST(RegionPictureTest, ItMayGoWhileItScales)
{
    const Theme theme;
    auto picture = std::make_unique<RegionPicture>(theme, region(4000, 2000));
    picture->resize(kRoom);
    picture->show();
    picture.reset();
    SUCCEED();
}

TEST(RegionPictureTest, WithoutAPictureThereIsOnlyTheMat)
{
    const Theme theme;
    RegionPicture picture(theme, {});
    picture.resize(kRoom);
    EXPECT_EQ(picture.grab().toImage().pixelColor(125, 132), theme.colours().mat);
}

} // namespace
} // namespace tessary::testing
