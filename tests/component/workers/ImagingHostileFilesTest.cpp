#include "tests/component/workers/ImagingFixture.h"

#include <QRandomGenerator>

namespace tessary {
namespace {

using namespace testing;
using Case = ImageError::Case;

/// Files that are broken, lie, or ask for too much. Each fails as one typed error, in the same worker.
class ImagingHostileFilesTest : public ImagingFixture {
protected:
    void SetUp() override
    {
        EXPECT_EQ(await(codec().pixelSize(write("good.png", encoded(quadrants(8, 8), "png")))), QSize(8, 8));
        m_worker = codec().workerProcessId();
        ASSERT_TRUE(m_worker);
    }
    void TearDown() override
    {
        EXPECT_EQ(codec().workerProcessId(), m_worker) << "the worker should have survived";
    }
    /// What decoding the bytes ends with; a thumbnail leaves nothing behind when it fails.
    std::optional<Case> failureOfDecoding(const QByteArray& bytes)
    {
        const QString path = write("hostile.png", bytes);
        const QStringList before = filesInFolder();
        EXPECT_EQ(failureOf(codec().writeThumbnail(path, file("thumbnail.jpg"), 480, 0.78)).has_value(),
                  failureOf(codec().decode(path, 480)).has_value());
        const auto failure = failureOf(codec().decode(path, 480));
        if (failure) {
            EXPECT_EQ(filesInFolder(), before);
        }
        return failure;
    }
    std::optional<Case> failureOfHeader(const QByteArray& bytes)
    {
        return failureOf(codec().pixelSize(write("hostile.png", bytes)));
    }

private:
    std::optional<pid_t> m_worker;
};

TEST_F(ImagingHostileFilesTest, RefusesWhatIsNoPicture)
{
    for (const QByteArray& bytes : {QByteArray(), QByteArray("hello, world"), QByteArray(5000, '\0'),
                                    QByteArray("\x89PNG\r\n\x1a\n"), QByteArray("\xff\xd8\xff", 3)})
        EXPECT_EQ(failureOfDecoding(bytes), Case::NotAnImage) << bytes.left(10).toHex().constData();
}

TEST_F(ImagingHostileFilesTest, RefusesPathsThatAreNoRegularFile)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(file("pipe.png")).constData(), 0600), 0);
    for (const QString& path : {file("missing.png"), file(""), QStringLiteral("/dev/zero"), file("pipe.png")})
        EXPECT_EQ(failureOf(codec().decode(path, 100)), Case::NotAnImage) << path.toStdString();
}

TEST_F(ImagingHostileFilesTest, RefusesTruncatedFiles)
{
    const QImage image = quadrants(400, 300);
    for (const QByteArray& whole :
         {encoded(image, "png"), encoded(image, "jpeg", 95), tiffWithOrientation(image, 1)})
        EXPECT_EQ(failureOfDecoding(whole.left(whole.size() / 2)), Case::NotAnImage)
            << whole.left(4).toHex().constData();
}

TEST_F(ImagingHostileFilesTest, RefusesOtherFormatsUnderAnAcceptedName)
{
    const QImage image = quadrants(20, 20);
    QFile webp(make("webp", "a.webp", image));
    ASSERT_TRUE(webp.open(QIODevice::ReadOnly));
    const QList<QByteArray> others{
        QByteArray::fromHex(
            "47494638396101000100800000ffffff00000021f90401000000002c000000000100010000020144003b"),
        QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
                   "height='9'/></svg>"),
        QByteArray(
            "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>"
            "endobj 3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>endobj trailer<</Root 1 0 R>>"),
        encoded(image, "bmp"),
        encoded(image, "ppm"),
        encoded(image, "xpm"),
        webp.readAll(),
        QByteArray("1 2 3\n4 5 6\n"),
        QByteArray("#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 1\n") + QByteArray(4, '\0')};
    for (const QByteArray& bytes : others) {
        ASSERT_FALSE(bytes.isEmpty());
        EXPECT_EQ(failureOfDecoding(bytes), Case::NotAnImage) << bytes.left(10).toStdString();
    }
}

TEST_F(ImagingHostileFilesTest, RefusesOtherFormatsFromTheClipboardToo)
{
    const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
    EXPECT_EQ(failureOf(codec().pngFromBitmap(svg)), Case::NotAnImage);
    EXPECT_EQ(failureOf(codec().pngFromBitmap(encoded(quadrants(9, 9), "ppm"))), Case::NotAnImage);
    EXPECT_EQ(failureOf(codec().pngFromBitmap(QByteArray("BM") + QByteArray(60, '\0'))), Case::NotAnImage);
    EXPECT_EQ(failureOf(codec().pngFromBitmap({})), Case::NotAnImage);
}

TEST_F(ImagingHostileFilesTest, RefusesHeadersThatPromiseTooManyPixels)
{
    EXPECT_EQ(failureOfHeader(pngHeaderOnly(60000, 60000, 8, 2, false)), Case::TooLarge);
    EXPECT_EQ(failureOfHeader(pngHeaderOnly(20000, 14000, 8, 2, false)), Case::TooLarge);
    EXPECT_EQ(failureOfHeader(pngHeaderOnly(16384, 16384, 8, 2, false)), std::nullopt);
    EXPECT_EQ(failureOfHeader(pngHeaderOnly(10001, 10000, 8, 2, true)), Case::TooLarge);
    EXPECT_EQ(failureOfHeader(pngHeaderOnly(10000, 10000, 8, 2, true)), std::nullopt);
    EXPECT_EQ(failureOfHeader(jpegWithSides(progressiveJpeg(quadrants(64, 64)), 60000, 60000)),
              Case::TooLarge);
    EXPECT_EQ(failureOfHeader(tiffOf(tiffTags(100'000, 100'000, 2, 3), "x")), Case::TooLarge);
}

TEST_F(ImagingHostileFilesTest, RefusesBombsUnderTheCaps)
{
    // A quarter of a thousand megapixels in a few hundred bytes.
    EXPECT_TRUE(failureOfDecoding(pngHeaderOnly(16000, 16000, 8, 6, false)));
    EXPECT_TRUE(failureOfDecoding(pngHeaderOnly(10000, 10000, 16, 6, true)));
    // All coefficients of a progressive picture would need 1.5 GB.
    EXPECT_EQ(failureOfDecoding(jpegWithSides(progressiveJpeg(quadrants(64, 64)), 16000, 16000)),
              Case::TooLarge);
}

TEST_F(ImagingHostileFilesTest, RefusesBitmapsThatPromiseTooManyPixels)
{
    QByteArray bitmap = encoded(quadrants(8, 8), "bmp");
    constexpr int kSidesAt = 18;
    bitmap.replace(kSidesAt, 8, QByteArray::fromHex("60ea000060ea0000"));
    EXPECT_EQ(failureOf(codec().pngFromBitmap(bitmap)), Case::TooLarge);
}

TEST_F(ImagingHostileFilesTest, RefusesAbsurdTiffTags)
{
    const QByteArray pixels(30 * 20 * 3, 'p');
    const auto changed = [&](quint16 tag, quint32 value) {
        QList<TiffTag> tags = tiffTags(30, 20, 2, 3);
        for (TiffTag& each : tags)
            each.value = each.tag == tag ? value : each.value;
        return tiffOf(tags, pixels);
    };
    ASSERT_EQ(failureOfDecoding(changed(0, 0)), std::nullopt) << "the unchanged one is good";
    EXPECT_TRUE(failureOfDecoding(changed(256, 0)));          // no width
    EXPECT_TRUE(failureOfDecoding(changed(257, 0xffffffff))); // height
    EXPECT_TRUE(failureOfDecoding(changed(259, 9999)));       // unknown compression
    EXPECT_TRUE(failureOfDecoding(changed(273, 0xfffffff0))); // pixels beyond the end
    EXPECT_TRUE(failureOfDecoding(changed(277, 65535)));      // samples a pixel
    QByteArray endless = tiffOf(tiffTags(30, 20, 2, 3), pixels);
    endless.replace(4, 4, QByteArray::fromHex("ffffffff")); // directory beyond the end
    EXPECT_TRUE(failureOfDecoding(endless));
}

TEST_F(ImagingHostileFilesTest, FailsCleanlyWhenThereIsNoMemoryForIt)
{
    if (TESSARY_SANITIZED)
        GTEST_SKIP() << "a sanitizer needs more address space than the limit";
    // To turn it, all of its two gigabytes would have to be in memory.
    const QByteArray deep = pngWithOrientation(pngHeaderOnly(16000, 16000, 16, 6, false), 6);
    EXPECT_EQ(failureOf(codec().pngFromBitmap(deep)), Case::TooLarge);
}

TEST_F(ImagingHostileFilesTest, SurvivesDamagedFiles)
{
    QRandomGenerator random(7);
    const QImage image = quadrants(48, 32);
    const QList<QByteArray> good{encoded(image, "png"), encoded(image, "jpeg", 90), progressiveJpeg(image),
                                 tiffWithOrientation(image, 6), jpegWithOrientation(image, 8)};
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes = good.at(round % good.size());
        for (int change = 0; change <= round % 5; ++change)
            bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
        const auto failure = failureOf(codec().decode(write("damaged.png", bytes), 100));
        EXPECT_TRUE(!failure || failure == Case::NotAnImage || failure == Case::TooLarge) << round;
    }
}

} // namespace
} // namespace tessary
