#include "tests/component/workers/ImagingFixture.h"

#include <QColorSpace>

namespace tessary {
namespace {

using namespace testing;

class ImagingFormatsTest : public ImagingFixture {
protected:
    /// Every way of reading the file sees the sample picture.
    void expectQuadrants(const QString& path, QSize size)
    {
        EXPECT_EQ(await(codec().pixelSize(path)), size);
        const QImage decoded = await(codec().decode(path, 1000));
        EXPECT_EQ(decoded.size(), size);
        EXPECT_EQ(decoded.format(), QImage::Format_RGB32);
        EXPECT_EQ(cornersOf(decoded), uprightCorners(1));
        await(codec().writeThumbnail(path, file("thumbnail.jpg"), 30, 0.78));
        const QImage thumbnail(file("thumbnail.jpg"), "jpeg");
        EXPECT_EQ(std::max(thumbnail.width(), thumbnail.height()), 30);
        EXPECT_EQ(cornersOf(thumbnail), uprightCorners(1));
    }
};

TEST_F(ImagingFormatsTest, ReadsEveryAcceptedFormatWhateverTheFileIsNamed)
{
    const QImage image = quadrants(60, 40);
    expectQuadrants(write("a.png", encoded(image, "png")), {60, 40});
    expectQuadrants(write("b.jpeg", encoded(image, "jpeg", 95)), {60, 40});
    expectQuadrants(write("c.jpg", progressiveJpeg(image)), {60, 40});
    expectQuadrants(write("d.tiff", tiffWithOrientation(image, 1)), {60, 40});
    expectQuadrants(write("e.png", encoded(image, "jpeg", 95)), {60, 40});
    expectQuadrants(write("截图 [page=1].png", encoded(image, "png")), {60, 40});
    expectQuadrants(make("heic", "f.heic", quadrants(128, 96)), {128, 96});
}

TEST_F(ImagingFormatsTest, ReadsEveryKindOfPixels)
{
    const QImage image = quadrants(60, 40);
    expectQuadrants(write("16.png", encoded(image.convertToFormat(QImage::Format_RGBX64), "png")), {60, 40});
    expectQuadrants(write("palette.png", encoded(image.convertToFormat(QImage::Format_Indexed8), "png")),
                    {60, 40});
    expectQuadrants(write("cmyk.tiff", cmykTiff(60, 40)), {60, 40});
    expectQuadrants(make("cmyk-jpeg", "cmyk.jpg", image), {60, 40});
}

TEST_F(ImagingFormatsTest, ReadsGreyAndBlackAndWhite)
{
    QImage half(40, 40, QImage::Format_Grayscale8);
    half.fill(Qt::white);
    for (int y = 0; y < 20; ++y)
        std::fill_n(half.scanLine(y), 40, uchar(0));
    for (const QImage::Format format :
         {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_Mono}) {
        const QString path = write("grey.png", encoded(half.convertToFormat(format), "png"));
        const QImage decoded = await(codec().decode(path, 100));
        ASSERT_EQ(decoded.size(), QSize(40, 40));
        EXPECT_EQ(decoded.pixelColor(20, 5), QColor(Qt::black));
        EXPECT_EQ(decoded.pixelColor(20, 35), QColor(Qt::white));
    }
}

TEST_F(ImagingFormatsTest, KeepsTransparencyWhenDecodingAndPutsThumbnailsOnWhite)
{
    QImage image(100, 100, QImage::Format_ARGB32);
    image.fill(QColor(200, 0, 0, 128));
    const QString path = write("alpha.png", encoded(image, "png"));
    const QImage decoded = await(codec().decode(path, 50));
    EXPECT_EQ(decoded.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_NEAR(decoded.pixelColor(25, 25).alpha(), 128, 1);
    EXPECT_NEAR(decoded.pixelColor(25, 25).red(), 200, 2);
    await(codec().writeThumbnail(path, file("thumbnail.jpg"), 50, 0.9));
    const QColor onWhite = QImage(file("thumbnail.jpg")).pixelColor(25, 25);
    EXPECT_NEAR(onWhite.red(), 227, 4);
    EXPECT_NEAR(onWhite.green(), 127, 4);
}

TEST_F(ImagingFormatsTest, BringsOtherColourSpacesIntoSrgb)
{
    QImage wide(50, 50, QImage::Format_RGB32);
    wide.fill(QColor(180, 90, 60));
    wide.setColorSpace(QColorSpace::DisplayP3);
    const QString path = write("p3.png", encoded(wide, "png"));
    const QColor expected = wide.convertedToColorSpace(QColorSpace::SRgb).pixelColor(20, 20);
    const QColor decoded = await(codec().decode(path, 50)).pixelColor(20, 20);
    ASSERT_GT(expected.red(), 185) << "the two spaces differ";
    EXPECT_NEAR(decoded.red(), expected.red(), 3);
    EXPECT_NEAR(decoded.green(), expected.green(), 3);
    EXPECT_NEAR(decoded.blue(), expected.blue(), 3);
}

TEST_F(ImagingFormatsTest, LeavesColoursWithoutAProfileExactlyAsTheyAre)
{
    QImage plain(50, 50, QImage::Format_RGB32);
    plain.fill(QColor(12, 234, 56));
    const QImage decoded = await(codec().decode(write("plain.png", encoded(plain, "png")), 50));
    EXPECT_EQ(decoded, plain);
}

TEST_F(ImagingFormatsTest, NeverEnlargesAndFitsTheLongerSide)
{
    const QString wide = write("wide.png", encoded(quadrants(1200, 300), "png"));
    EXPECT_EQ(await(codec().decode(wide, 480)).size(), QSize(480, 120));
    EXPECT_EQ(await(codec().decode(wide, 5000)).size(), QSize(1200, 300));
    const QString line = write("line.png", encoded(quadrants(4000, 2), "png"));
    EXPECT_EQ(await(codec().decode(line, 100)).size(), QSize(100, 1));
}

TEST_F(ImagingFormatsTest, WritesThumbnailsForTheOwnerOnlyWithoutMetadata)
{
    const QString source = write("exif.jpg", jpegWithOrientation(quadrants(600, 400), 6));
    await(codec().writeThumbnail(source, file("thumbnail.jpg"), 480, 0.78));
    QFile thumbnail(file("thumbnail.jpg"));
    EXPECT_EQ(thumbnail.permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(thumbnail.open(QIODevice::ReadOnly));
    EXPECT_FALSE(thumbnail.readAll().contains("Exif"));
    EXPECT_EQ(QImage(file("thumbnail.jpg")).size(), QSize(320, 480));
}

TEST_F(ImagingFormatsTest, MakesSmallerFilesOfLowerQuality)
{
    QImage noise(300, 300, QImage::Format_RGB32);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 300; ++x)
            noise.setPixel(x, y, qRgb(x * y % 255, (x + 3 * y) % 255, x * 7 % 255));
    const QString source = write("noise.png", encoded(noise, "png"));
    await(codec().writeThumbnail(source, file("low.jpg"), 300, 0.2));
    await(codec().writeThumbnail(source, file("high.jpg"), 300, 0.9));
    EXPECT_LT(QFileInfo(file("low.jpg")).size() * 2, QFileInfo(file("high.jpg")).size());
}

TEST_F(ImagingFormatsTest, MakesPngOfEveryBitmapThatAClipboardOffers)
{
    const QImage image = quadrants(60, 40);
    QFile webp(make("webp", "a.webp", image));
    QFile heic(make("heic", "a.heic", quadrants(128, 96)));
    ASSERT_TRUE(webp.open(QIODevice::ReadOnly) && heic.open(QIODevice::ReadOnly));
    const QList<QByteArray> bitmaps{encoded(image, "bmp"),
                                    tiffWithOrientation(image, 1),
                                    encoded(image, "jpeg", 95),
                                    encoded(image, "png"),
                                    cmykTiff(60, 40),
                                    webp.readAll(),
                                    heic.readAll()};
    for (const QByteArray& bitmap : bitmaps) {
        const QByteArray png = await(codec().pngFromBitmap(bitmap));
        EXPECT_TRUE(png.startsWith("\x89PNG"));
        EXPECT_EQ(cornersOf(QImage::fromData(png, "png")), uprightCorners(1));
    }
}

TEST_F(ImagingFormatsTest, MakesTheSamePngOfTheSameBitmapEachTime)
{
    const QByteArray bitmap = encoded(quadrants(300, 200), "bmp");
    const QByteArray first = await(codec().pngFromBitmap(bitmap));
    EXPECT_EQ(await(codec().pngFromBitmap(bitmap)), first);
    EXPECT_EQ(QImage::fromData(first).convertToFormat(QImage::Format_RGB32), quadrants(300, 200));
}

TEST_F(ImagingFormatsTest, KeepsTheTransparencyAndDepthOfABitmap)
{
    QImage image(20, 20, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30, 77));
    const QImage made = QImage::fromData(await(codec().pngFromBitmap(encoded(image, "png"))));
    EXPECT_EQ(made.pixelColor(3, 3), QColor(10, 200, 30, 77));
    const QByteArray deep = encoded(quadrants(20, 20).convertToFormat(QImage::Format_RGBX64), "png");
    EXPECT_EQ(QImage::fromData(await(codec().pngFromBitmap(deep))).depth(), 64);
}

TEST_F(ImagingFormatsTest, ShowsTheFirstPictureOfAnAnimation)
{
    QFile animation(make("animated-webp", "a.webp", quadrants(60, 40)));
    ASSERT_TRUE(animation.open(QIODevice::ReadOnly));
    const QImage made = QImage::fromData(await(codec().pngFromBitmap(animation.readAll())));
    ASSERT_EQ(made.size(), QSize(60, 20));
    EXPECT_EQ(made.pixelColor(10, 15), QColor(Qt::red));
    EXPECT_EQ(made.pixelColor(50, 15), QColor(Qt::green));
}

} // namespace
} // namespace tessary
