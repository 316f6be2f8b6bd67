#include "platform/linux/DesktopApplicationIcons.h"

#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary {
namespace {

using testing::await;
using testing::writeFile;

class DesktopApplicationIconsTest : public ::testing::Test {
protected:
    DesktopApplicationIconsTest()
    {
        writeFile(folder.file(QStringLiteral("icons/hicolor/index.theme")),
                  "[Icon Theme]\nDirectories=48\n[48]\nSize=48\n");
    }
    QUrl entry(const QByteArray& icon)
    {
        const QString path = folder.file(QStringLiteral("app.desktop"));
        writeFile(path, "[Desktop Entry]\nType=Application\nName=App\nIcon=" + icon + '\n');
        return QUrl::fromLocalFile(path);
    }
    QString themed(const QString& file) { return folder.file(QStringLiteral("icons/hicolor/48/") + file); }
    QImage icon(const QUrl& url, int size = 128) { return await(icons.icon(url, size)); }

    testing::TemporaryFolder folder;
    DesktopApplicationIcons icons{{folder.path()}, QStringLiteral("none-such")};
};

TEST_F(DesktopApplicationIconsTest, DrawsTheIconIntoASquare)
{
    QImage wide(48, 24, QImage::Format_RGB32);
    wide.fill(Qt::red);
    ASSERT_TRUE(QDir().mkpath(themed({})));
    ASSERT_TRUE(wide.save(themed(QStringLiteral("app.png"))));
    const QImage image = icon(entry("app"));
    EXPECT_EQ(image.size(), QSize(128, 128));
    EXPECT_EQ(image.pixelColor(64, 64), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(64, 5).alpha(), 0);
}

TEST_F(DesktopApplicationIconsTest, DrawsAVectorIconSharply)
{
    writeFile(themed(QStringLiteral("app.svg")),
              "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'>"
              "<rect width='8' height='16' fill='#00f'/></svg>");
    const QImage image = icon(entry("app"));
    ASSERT_EQ(image.size(), QSize(128, 128));
    EXPECT_EQ(image.pixelColor(60, 64), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(68, 64).alpha(), 0);
}

TEST_F(DesktopApplicationIconsTest, HasNoIconWhereThereIsNone)
{
    EXPECT_TRUE(icon(entry("missing")).isNull());
    EXPECT_TRUE(icon(entry("")).isNull());
    EXPECT_TRUE(icon(QUrl()).isNull());
    EXPECT_TRUE(icon(QUrl(QStringLiteral("https://example.org/app.desktop"))).isNull());
    EXPECT_TRUE(icon(QUrl::fromLocalFile(folder.file(QStringLiteral("gone.desktop")))).isNull());
}

TEST_F(DesktopApplicationIconsTest, ABrokenOrHugePictureIsNoIcon)
{
    writeFile(themed(QStringLiteral("app.png")), "no picture");
    EXPECT_TRUE(icon(entry("app")).isNull());
    QImage huge(9000, 2000, QImage::Format_Mono);
    huge.fill(0);
    ASSERT_TRUE(huge.save(themed(QStringLiteral("huge.png"))));
    EXPECT_TRUE(icon(entry("huge")).isNull());
}

TEST_F(DesktopApplicationIconsTest, RefusesASizeThatIsNone)
{
    const QUrl url = entry("app");
    EXPECT_TRUE(icon(url, 0).isNull());
    EXPECT_TRUE(icon(url, 1 << 30).isNull());
}

} // namespace
} // namespace tessary
