#include "platform/testing/FakeImageCodec.h"
#include "tests/component/workers/ImagingFixture.h"

namespace tessary {
namespace {

using namespace testing;
using Case = ImageError::Case;

enum class Kind { Real, Fake };

/// What every image codec promises; kept by the fake, too, on which other tests rely.
class ImageCodecContractTest : public ImagingFixture, public ::testing::WithParamInterface<Kind> {
protected:
    void SetUp() override
    {
        m_picture = write("picture.png", encoded(quadrants(600, 400), "png"));
        m_broken = write("broken.png", "not a picture");
        m_fake.sizes = {{m_picture, QSize(600, 400)}, {m_broken, QSize()}};
    }
    [[nodiscard]] ImageCodec& any()
    {
        return GetParam() == Kind::Real ? static_cast<ImageCodec&>(codec()) : m_fake;
    }
    [[nodiscard]] const QString& picture() const { return m_picture; }
    [[nodiscard]] const QString& broken() const { return m_broken; }

private:
    FakeImageCodec m_fake;
    QString m_picture;
    QString m_broken;
};

TEST_P(ImageCodecContractTest, TellsTheSizeInTheHeader)
{
    EXPECT_EQ(await(any().pixelSize(picture())), QSize(600, 400));
}

TEST_P(ImageCodecContractTest, WritesAJpegOfAtMostThatSizeForTheOwnerOnly)
{
    await(any().writeThumbnail(picture(), file("thumbnail.jpg"), 480, 0.78));
    EXPECT_EQ(QImage(file("thumbnail.jpg"), "jpeg").size(), QSize(480, 320));
    EXPECT_EQ(QFile::permissions(file("thumbnail.jpg")) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    await(any().writeThumbnail(picture(), file("thumbnail.jpg"), 5000, 0.78));
    EXPECT_EQ(QImage(file("thumbnail.jpg")).size(), QSize(600, 400));
}

TEST_P(ImageCodecContractTest, DecodesNoLargerThanAsked)
{
    EXPECT_EQ(await(any().decode(picture(), 300)).size(), QSize(300, 200));
    EXPECT_EQ(await(any().decode(picture(), 3000)).size(), QSize(600, 400));
}

TEST_P(ImageCodecContractTest, MakesPngOfABitmap)
{
    const QByteArray png = await(any().pngFromBitmap(encoded(quadrants(20, 10), "bmp")));
    EXPECT_FALSE(QImage::fromData(png, "png").isNull());
}

TEST_P(ImageCodecContractTest, ThrowsForWhatIsNoImage)
{
    EXPECT_EQ(failureOf(any().pixelSize(broken())), Case::NotAnImage);
    EXPECT_EQ(failureOf(any().decode(broken(), 100)), Case::NotAnImage);
    EXPECT_EQ(failureOf(any().writeThumbnail(broken(), file("thumbnail.jpg"), 100, 0.5)), Case::NotAnImage);
    EXPECT_FALSE(QFile::exists(file("thumbnail.jpg")));
}

TEST_P(ImageCodecContractTest, ThrowsWhenTheThumbnailCannotBeWritten)
{
    EXPECT_EQ(failureOf(any().writeThumbnail(picture(), file("missing/thumbnail.jpg"), 100, 0.5)),
              Case::WriteFailed);
}

TEST_P(ImageCodecContractTest, AnswersThroughTheEventLoop)
{
    bool answered = false;
    QObject context;
    QCoro::connect(any().pixelSize(picture()), &context, [&](QSize) { answered = true; });
    EXPECT_FALSE(answered);
    EXPECT_TRUE(eventually([&] { return answered; }));
}

INSTANTIATE_TEST_SUITE_P(Codecs, ImageCodecContractTest, ::testing::Values(Kind::Real, Kind::Fake),
                         [](const auto& kind) { return kind.param == Kind::Real ? "Real" : "Fake"; });

} // namespace
} // namespace tessary
