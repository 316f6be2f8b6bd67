#include "tests/component/workers/ImagingFixture.h"

namespace tessary {
namespace {

using namespace testing;

/// All eight orientations of the formats that have them.
class ImagingOrientationTest : public ImagingFixture, public ::testing::WithParamInterface<int> {
protected:
    void expectUpright(const QByteArray& bytes)
    {
        const int orientation = GetParam();
        const QString path = write("picture", bytes);
        const QSize upright = orientation >= 5 ? QSize(40, 60) : QSize(60, 40);
        EXPECT_EQ(await(codec().pixelSize(path)), QSize(60, 40)) << "the header's size stays as stored";
        const QImage decoded = await(codec().decode(path, 1000));
        EXPECT_EQ(decoded.size(), upright);
        EXPECT_EQ(cornersOf(decoded), uprightCorners(orientation));
        await(codec().writeThumbnail(path, file("thumbnail.jpg"), 30, 0.9));
        const QImage thumbnail(file("thumbnail.jpg"));
        EXPECT_EQ(thumbnail.size(), upright / 2);
        EXPECT_EQ(cornersOf(thumbnail), uprightCorners(orientation));
        expectUprightParts(path, decoded);
        const QImage png = QImage::fromData(await(codec().pngFromBitmap(bytes)));
        EXPECT_EQ(png.size(), upright);
        EXPECT_EQ(cornersOf(png), uprightCorners(orientation));
    }

    void expectUprightParts(const QString& path, const QImage& whole)
    {
        for (const QRect part : {QRect(3, 5, 20, 12), QRect(QPoint(), whole.size())})
            EXPECT_EQ(cornersOf(await(codec().decodePart(path, part, part.size()))),
                      cornersOf(whole.copy(part)));
        const QRect end(whole.width() / 2, whole.height() / 4, whole.width() / 2, whole.height() / 2);
        EXPECT_EQ(cornersOf(await(codec().decodePart(path, end, end.size() / 2))),
                  cornersOf(whole.copy(end)));
    }
};

TEST_P(ImagingOrientationTest, IsAppliedToJpeg)
{
    expectUpright(jpegWithOrientation(quadrants(60, 40), GetParam()));
}

TEST_P(ImagingOrientationTest, IsAppliedToPng)
{
    expectUpright(pngWithOrientation(encoded(quadrants(60, 40), "png"), GetParam()));
}

TEST_P(ImagingOrientationTest, IsAppliedToTiff)
{
    expectUpright(tiffWithOrientation(quadrants(60, 40), GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, ImagingOrientationTest, ::testing::Range(1, 9));

} // namespace
} // namespace tessary
