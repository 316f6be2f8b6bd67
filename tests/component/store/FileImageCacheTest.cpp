#include "store/FileImageCache.h"

#include "platform/testing/FakeImageCodec.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

using namespace testing;

class FileImageCacheTest : public ::testing::Test {
protected:
    FileImageCacheTest()
    {
        QDir().mkpath(m_folder.file(QStringLiteral("Thumbnails")));
        m_cache.setSources(&m_codec, {m_folder.file(QStringLiteral("Thumbnails")),
                                      m_folder.file(QStringLiteral("App Icons/"))});
    }
    [[nodiscard]] QImage load(const QString& path, int size) { return await(m_cache.image(path, size)); }
    [[nodiscard]] QString original(int number = 0) const
    {
        return QStringLiteral("/library/%1.png").arg(number);
    }
    [[nodiscard]] QString thumbnail(const char* name) const
    {
        return m_folder.file(QStringLiteral("Thumbnails/") + QLatin1String(name));
    }
    [[nodiscard]] QString writeThumbnail(const char* name, QSize size, const char* format)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        EXPECT_TRUE(image.save(thumbnail(name), format));
        return thumbnail(name);
    }

    FakeImageCodec m_codec;
    TemporaryFolder m_folder;
    FileImageCache m_cache;
};

TEST_F(FileImageCacheTest, DecodesOnceAndAnswersFromTheCacheThen)
{
    m_codec.defaultSize = QSize(400, 300);
    const QImage first = load(original(), 200);
    EXPECT_EQ(first.size(), QSize(200, 150));
    EXPECT_EQ(load(original(), 200).cacheKey(), first.cacheKey());
    EXPECT_EQ(m_codec.requests.size(), 1);
    EXPECT_EQ(m_cache.totalCost(), 200 * 4 * 150);
}

TEST_F(FileImageCacheTest, KeepsEachSizeOfAPathByItself)
{
    m_codec.defaultSize = QSize(2000, 1000);
    EXPECT_EQ(load(original(), 256).width(), 256);
    EXPECT_EQ(load(original(), 1024).width(), 1024);
    EXPECT_EQ(m_cache.count(), 2);
    EXPECT_EQ(load(original(), 256).width(), 256);
    EXPECT_EQ(m_codec.requests.size(), 2);
}

TEST_F(FileImageCacheTest, YieldsNothingForWhatIsNoImageAndTriesAgainNextTime)
{
    m_codec.decodeFailure = ImageError::Case::NotAnImage;
    EXPECT_TRUE(load(original(), 256).isNull());
    EXPECT_EQ(m_cache.count(), 0);
    EXPECT_EQ(m_cache.totalCost(), 0);
    m_codec.decodeFailure.reset();
    EXPECT_FALSE(load(original(), 256).isNull());
    EXPECT_EQ(m_cache.count(), 1);
}

TEST_F(FileImageCacheTest, LeavesOtherEntriesAloneWhenAFileIsNoImage)
{
    ASSERT_FALSE(load(original(1), 256).isNull());
    m_codec.sizes.insert(original(2), QSize());
    EXPECT_TRUE(load(original(2), 256).isNull());
    EXPECT_EQ(m_cache.count(), 1);
    ASSERT_FALSE(load(original(1), 256).isNull());
    EXPECT_EQ(m_codec.requests.count(QStringLiteral("decode ") + original(1)), 1);
}

TEST_F(FileImageCacheTest, DropsTheOneUsedLongestAgoBeyondSixHundred)
{
    for (int number = 0; number < 600; ++number)
        ASSERT_FALSE(load(original(number), 10).isNull());
    EXPECT_EQ(m_cache.count(), 600);
    ASSERT_FALSE(load(original(0), 10).isNull()); // used again: the second is now the oldest
    ASSERT_FALSE(load(original(600), 10).isNull());
    EXPECT_EQ(m_cache.count(), 600);
    m_codec.requests.clear();
    ASSERT_FALSE(load(original(0), 10).isNull());
    EXPECT_TRUE(m_codec.requests.isEmpty());
    ASSERT_FALSE(load(original(1), 10).isNull());
    EXPECT_EQ(m_codec.requests.size(), 1);
}

TEST_F(FileImageCacheTest, StaysWithinItsBytes)
{
    m_codec.defaultSize = QSize(3000, 2000); // 24 MB each
    for (int number = 0; number < 5; ++number)
        ASSERT_FALSE(load(original(number), 4000).isNull());
    EXPECT_EQ(m_cache.count(), 4);
    EXPECT_EQ(m_cache.totalCost(), 4 * 24'000'000);
}

TEST_F(FileImageCacheTest, GivesAnImageThatIsTooLargeToKeepWithoutKeepingIt)
{
    ASSERT_FALSE(load(original(1), 10).isNull());
    m_codec.sizes.insert(original(2), QSize(6000, 5000));
    EXPECT_EQ(load(original(2), 6000).size(), QSize(6000, 5000));
    EXPECT_EQ(m_cache.count(), 1);
}

TEST_F(FileImageCacheTest, DecodesTwiceWhenTwoAskAtOnceAndKeepsOne)
{
    m_codec.gate.close();
    QObject context;
    int answers = 0;
    for (int i = 0; i < 2; ++i)
        QCoro::connect(m_cache.image(original(), 100), &context,
                       [&](const QImage& image) { answers += !image.isNull(); });
    ASSERT_TRUE(eventually([&] { return m_codec.gate.waitingCount() == 2; }));
    m_codec.gate.open();
    ASSERT_TRUE(eventually([&] { return answers == 2; }));
    EXPECT_EQ(m_codec.requests.size(), 2);
    EXPECT_EQ(m_cache.count(), 1);
}

TEST_F(FileImageCacheTest, ReadsOurOwnThumbnailsInProcess)
{
    EXPECT_EQ(load(writeThumbnail("a.jpg", {480, 270}, "jpeg"), 240).size(), QSize(240, 135));
    EXPECT_EQ(load(writeThumbnail("b.png", {128, 128}, "png"), 480).size(), QSize(128, 128));
    EXPECT_EQ(load(writeThumbnail("c.png", {400, 2}, "png"), 100).size(), QSize(100, 1));
    EXPECT_TRUE(m_codec.requests.isEmpty());
    EXPECT_EQ(m_cache.count(), 3);
}

TEST_F(FileImageCacheTest, YieldsNothingForBrokenOrMissingThumbnailsUntilTheyAreThere)
{
    QFile file(thumbnail("broken.jpg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("not a picture") > 0);
    file.close();
    EXPECT_TRUE(load(thumbnail("broken.jpg"), 100).isNull());
    EXPECT_TRUE(load(thumbnail("later.jpg"), 100).isNull());
    EXPECT_TRUE(load(writeThumbnail("huge.png", {8000, 4000}, "png"), 100).isNull());
    EXPECT_TRUE(load(writeThumbnail("bitmap.png", {10, 10}, "bmp"), 100).isNull());
    EXPECT_EQ(m_cache.count(), 0);
    EXPECT_FALSE(load(writeThumbnail("later.jpg", {10, 10}, "jpeg"), 100).isNull());
}

TEST_F(FileImageCacheTest, LeavesPathsThatOnlyPassThroughOurFoldersToTheCodec)
{
    const QString outside = thumbnail("../Originals/a.png");
    ASSERT_FALSE(load(outside, 100).isNull());
    ASSERT_FALSE(load(m_folder.file(QStringLiteral("Thumbnails2/a.png")), 100).isNull());
    EXPECT_EQ(m_codec.requests.size(), 2);
}

TEST_F(FileImageCacheTest, HasNothingForForeignFilesWithoutACodec)
{
    m_cache.setSources(nullptr, {});
    EXPECT_TRUE(load(original(), 100).isNull());
    EXPECT_TRUE(load(original(), 0).isNull());
}

TEST_F(FileImageCacheTest, IsOneForTheProcessWithTheAgreedLimits)
{
    EXPECT_EQ(&FileImageCache::shared(), &FileImageCache::shared());
    EXPECT_EQ(FileImageCache::kTotalCostLimit, 96 * 1024 * 1024);
    EXPECT_EQ(FileImageCache::kCountLimit, 600);
}

} // namespace
} // namespace tessary
