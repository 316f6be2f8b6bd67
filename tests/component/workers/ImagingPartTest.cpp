#include "tests/component/workers/ImagingFixture.h"

namespace tessary {
namespace {

using namespace testing;

/// Every place has a colour of its own, without anything finer than a pixel's neighbours would show.
QImage gradient(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 128));
    return image;
}

int largestDifference(const QImage& one, const QImage& other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max({largest, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                std::abs(a.blue() - b.blue())});
        }
    return largest;
}

class ImagingPartTest : public ImagingFixture {
protected:
    std::optional<ImageError::Case> failureOf(const QString& path, const QRect& part, const QSize& size)
    {
        try {
            await(codec().decodePart(path, part, size));
        } catch (const ImageError& error) {
            return error.which();
        }
        return std::nullopt;
    }
};

TEST_F(ImagingPartTest, IsExactlyThatPartOfThePicture)
{
    const QImage picture = gradient(900, 700);
    const QString path = write("picture", encoded(picture, "png"));
    for (const QRect part : {QRect(0, 0, 900, 700), QRect(512, 512, 388, 188), QRect(899, 699, 1, 1)})
        EXPECT_EQ(await(codec().decodePart(path, part, part.size())), picture.copy(part));
}

TEST_F(ImagingPartTest, IsScaledDown)
{
    const QImage picture = gradient(1600, 1200);
    for (const char* format : {"png", "jpg"}) {
        const QString path = write("picture", encoded(picture, format));
        for (const int factor : {2, 4, 8, 16}) {
            const QRect part(320, 480, 960, 640);
            const QImage scaled = await(codec().decodePart(path, part, part.size() / factor));
            const QImage expected = picture.copy(part).scaled(part.size() / factor, Qt::IgnoreAspectRatio,
                                                              Qt::SmoothTransformation);
            ASSERT_EQ(scaled.size(), expected.size());
            EXPECT_LE(largestDifference(scaled, expected), 6) << format << factor;
        }
    }
}

TEST_F(ImagingPartTest, KeepsTransparency)
{
    QImage picture(64, 64, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    for (int y = 0; y < 64; ++y)
        for (int x = 32; x < 64; ++x)
            picture.setPixelColor(x, y, Qt::red);
    const QString path = write("picture", encoded(picture, "png"));
    const QImage scaled = await(codec().decodePart(path, QRect(0, 0, 64, 64), QSize(16, 16)));
    EXPECT_EQ(scaled.pixelColor(2, 8).alpha(), 0);
    EXPECT_EQ(scaled.pixelColor(13, 8), QColor(Qt::red));
}

TEST_F(ImagingPartTest, OutsideThePictureThereIsNone)
{
    const QString path = write("picture", encoded(gradient(60, 40), "png"));
    EXPECT_TRUE(failureOf(path, QRect(30, 0, 31, 10), QSize(10, 10)));
    EXPECT_TRUE(failureOf(path, QRect(-1, 0, 10, 10), QSize(10, 10)));
    EXPECT_TRUE(failureOf(path, QRect(0, 0, 10, 10), QSize(11, 10)));
    EXPECT_TRUE(failureOf(path, QRect(0, 0, 0, 0), QSize(0, 0)));
    EXPECT_EQ(failureOf(file("missing.png"), QRect(0, 0, 1, 1), QSize(1, 1)), ImageError::Case::NotAnImage);
}

TEST_F(ImagingPartTest, IsAnErrorWhereTheFileIsTruncated)
{
    QByteArray bytes = encoded(gradient(600, 600), "png");
    bytes.truncate(bytes.size() / 2);
    const QString path = write("picture", bytes);
    EXPECT_EQ(failureOf(path, QRect(500, 500, 64, 64), QSize(64, 64)), ImageError::Case::NotAnImage);
}

} // namespace
} // namespace tessary
