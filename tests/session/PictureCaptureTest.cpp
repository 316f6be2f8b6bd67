#include "base/ContentHash.h"
#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"

#include <QDir>
#include <QRegularExpression>

#include <sys/stat.h>

namespace tessary::testing {

namespace {

class PictureCaptureTest : public SessionTest {
protected:
    void SetUp() override { start(); }

    /// Puts the bytes on the clipboard under that target.
    void copyBytes(const QString& target, const QByteArray& bytes)
    {
        const QString path = scratch(QStringLiteral("picture %1").arg(++m_pictures));
        writeFile(path, bytes);
        offer(target + QStringLiteral("=file:") + path);
    }

    [[nodiscard]] QStringList loosePictures() const
    {
        return QDir(root()).entryList({QStringLiteral("*.png")}, QDir::Files | QDir::Hidden);
    }

private:
    int m_pictures = 0;
};

unsigned modeOf(const QString& path)
{
    struct stat status {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << qPrintable(path);
    return status.st_mode & 0777U;
}

TEST_F(PictureCaptureTest, APngIsStoredByteForByteWithAThumbnailAndPrivately)
{
    const QByteArray png = pngOf(picture(900, 600));
    copyBytes(QStringLiteral("image/png"), png);
    ASSERT_TRUE(holds(1));
    const LibraryItem item = library().items().front();
    EXPECT_EQ(item.contentType, 0);
    EXPECT_EQ(item.fileType, QStringLiteral("png"));
    EXPECT_EQ(item.libraryPath, root() + QStringLiteral("/Originals/%1.png").arg(item.id));
    EXPECT_EQ(item.id, item.id.toUpper());
    EXPECT_EQ(readFile(item.libraryPath), png);
    EXPECT_EQ(item.contentHash, contentHash(png));
    EXPECT_EQ(item.fileSize, png.size());
    EXPECT_EQ(item.pixelWidth, 900);
    EXPECT_EQ(item.pixelHeight, 600);
    EXPECT_EQ(item.thumbnailPath, root() + QStringLiteral("/Thumbnails/%1.jpg").arg(item.id));
    const QImage thumbnail = QImage::fromData(readFile(item.thumbnailPath), "JPEG");
    EXPECT_EQ(thumbnail.size(), QSize(480, 320));
    EXPECT_EQ(modeOf(item.libraryPath), 0600U);
    EXPECT_EQ(modeOf(item.thumbnailPath), 0600U);
    for (const char* folder : {"", "/Originals", "/Thumbnails", "/App Icons"})
        EXPECT_EQ(modeOf(root() + QLatin1String(folder)), 0700U) << folder;
    for (const char* file : {"/Tessary.sqlite3", "/Tessary.metadata.sqlite3"})
        EXPECT_EQ(modeOf(root() + QLatin1String(file)), 0600U) << file;
    EXPECT_TRUE(eventually([&] { return library().items().front().lastUsedAt > 0; }));
}

TEST_F(PictureCaptureTest, TwoPicturesWithinOneSecondAreBothKeptUnderTheirTime)
{
    const QRegularExpression name(
        QStringLiteral("^剪贴板图片 \\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d\\.png$"));
    copyBytes(QStringLiteral("image/png"), pngOf(picture(40, 30, 1)));
    ASSERT_TRUE(eventually([&] { return !loosePictures().isEmpty() || !library().items().empty(); }));
    copyBytes(QStringLiteral("image/png"), pngOf(picture(40, 30, 2)));
    ASSERT_TRUE(holds(2));
    for (const LibraryItem& item : library().items()) {
        EXPECT_TRUE(name.match(item.filename).hasMatch()) << qPrintable(item.filename);
        EXPECT_EQ(item.originalPath, root() + QLatin1Char('/') + item.filename);
        EXPECT_TRUE(QFile::exists(item.libraryPath));
    }
    EXPECT_TRUE(eventually([&] { return loosePictures().isEmpty(); })) << "the temporary file stays";
}

TEST_F(PictureCaptureTest, TheSamePictureTwiceIsOneItemThatCountsTwo)
{
    const QByteArray png = pngOf(picture(64, 64));
    copyBytes(QStringLiteral("image/png"), png);
    ASSERT_TRUE(holds(1));
    copyBytes(QStringLiteral("image/png"), png);
    EXPECT_TRUE(eventually([&] { return library().items().front().duplicateCount == 2; }));
    EXPECT_TRUE(holds(1));
    EXPECT_TRUE(eventually([&] { return loosePictures().isEmpty(); }));
    EXPECT_EQ(QDir(root() + QStringLiteral("/Originals")).entryList(QDir::Files).size(), 1);
}

TEST_F(PictureCaptureTest, APictureWithATextIsAPictureOnly)
{
    const QString path = scratch(QStringLiteral("both.png"));
    writeFile(path, pngOf(picture(50, 50)));
    gtk({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:its caption"), QStringLiteral("--offer"),
         QStringLiteral("image/png=file:") + path});
    ASSERT_TRUE(holds(1));
    EXPECT_EQ(library().items().front().contentType, 0);
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(2));
}

TEST_F(PictureCaptureTest, ABitmapOrATiffAloneBecomesAPng)
{
    const QImage image = picture(120, 80);
    int expected = 0;
    for (const auto& [target, bytes] :
         {std::pair(QStringLiteral("image/bmp"), bmpOf(image)),
          std::pair(QStringLiteral("image/tiff"), tiffOf(picture(120, 80, 9)))}) {
        copyBytes(target, bytes);
        ASSERT_TRUE(holds(++expected)) << qPrintable(target);
    }
    const std::vector<LibraryItem> items = library().items();
    EXPECT_EQ(QImage::fromData(readFile(items[0].libraryPath), "PNG").convertToFormat(image.format()), image);
    EXPECT_EQ(QImage::fromData(readFile(items[1].libraryPath), "PNG").convertToFormat(image.format()),
              picture(120, 80, 9));
}

TEST_F(PictureCaptureTest, APngThatIsNoneCostsOneMissedItemOnly)
{
    copyBytes(QStringLiteral("image/png"), QByteArray("\x89PNG\r\n\x1a\n and then nothing of the kind"));
    EXPECT_TRUE(tessary().printed(QStringLiteral("无法记录剪贴板："))) << qPrintable(tessary().output());
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
    EXPECT_TRUE(eventually([&] { return loosePictures().isEmpty(); }));
    EXPECT_TRUE(QDir(root() + QStringLiteral("/Originals")).entryList(QDir::Files).isEmpty());
}

TEST_F(PictureCaptureTest, APictureOfFortyEightMegapixelsIsKept)
{
    const QByteArray png = pngOf(picture(8000, 6000));
    copyBytes(QStringLiteral("image/png"), png);
    ASSERT_TRUE(holds(1));
    const LibraryItem item = library().items().front();
    EXPECT_EQ(item.pixelWidth, 8000);
    EXPECT_EQ(item.pixelHeight, 6000);
    EXPECT_EQ(item.contentHash, contentHash(png));
    EXPECT_EQ(QImage::fromData(readFile(item.thumbnailPath), "JPEG").size(), QSize(480, 360));
    EXPECT_TRUE(keepsCopying());
}

} // namespace

} // namespace tessary::testing
