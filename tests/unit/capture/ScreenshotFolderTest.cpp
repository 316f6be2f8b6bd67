#include "capture/ScreenshotFolder.h"

#include "base/FileDescriptor.h"
#include "capture/ScreenshotNames.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace tessary {
namespace {

class ScreenshotFolderTest : public ::testing::Test {
protected:
    QByteArray pathOf(const QByteArray& name) const
    {
        return QFile::encodeName(temporary.path()) + '/' + name;
    }
    void add(const QByteArray& name) const
    {
        const FileDescriptor file(::open(pathOf(name).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_GE(file.get(), 0) << name.constData() << ": " << std::strerror(errno);
    }
    void setChanged(const QByteArray& name, time_t seconds, long nanoseconds) const
    {
        const std::array times{timespec{seconds, nanoseconds}, timespec{seconds, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, pathOf(name).constData(), times.data(), 0), 0);
    }
    QList<QByteArray> scanned()
    {
        QList<QByteArray> names;
        for (const QByteArray& path : folder.scan().paths) {
            EXPECT_TRUE(path.startsWith(QFile::encodeName(temporary.path()) + '/'));
            names.append(path.mid(temporary.path().size() + 1));
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    testing::TemporaryFolder temporary;
    ScreenshotFolder folder{QFile::encodeName(temporary.path())};
};

TEST(ScreenshotNamesTest, AreKnownByTheirBeginningAndExtension)
{
    for (const char* name :
         {"Screenshot 2026-03-05 at 09.07.03.png", "screen shot.jpg", "截屏2026-03-05 09.07.03.png",
          "屏幕快照 1.jpeg", "螢幕截圖.heic", "Bildschirmfoto vom 1.tif", "Captura de pantalla 1.tiff",
          "Capture d’écran 2026-03-05.png", "capture d'ecran.PNG", "SCREENSHOT.PnG", "Screenshot.tar.png",
          "Capture d’e\u0301cran.png", "screenshotting.png"})
        EXPECT_TRUE(isScreenshotName(name)) << name;
    for (const char* name :
         {"IMG_0001.png", "Screenshot.gif", "my screenshot.png", ".screenshot.png", "screenshot", ".png", "",
          "screenshot.", "screenshot.png.part", "Capture d'écran.png", "png", "screenshot png"})
        EXPECT_FALSE(isScreenshotName(name)) << name;
}

TEST_F(ScreenshotFolderTest, ListsEachOnceAndAgainWhenItsDateDiffersByANanosecond)
{
    add("Screenshot 1.png");
    add("IMG_0001.png");
    setChanged("Screenshot 1.png", 1'000'000'000, 5);
    EXPECT_EQ(scanned(), QList<QByteArray>{"Screenshot 1.png"});
    EXPECT_TRUE(scanned().isEmpty());
    setChanged("Screenshot 1.png", 1'000'000'000, 6);
    EXPECT_EQ(scanned(), QList<QByteArray>{"Screenshot 1.png"});
    setChanged("Screenshot 1.png", -5, 0);
    EXPECT_EQ(scanned(), QList<QByteArray>{"Screenshot 1.png"});
}

TEST_F(ScreenshotFolderTest, AnAtomicallyReplacedFileIsListedAgain)
{
    add("Screenshot 1.png");
    EXPECT_EQ(scanned().size(), 1);
    add("next");
    setChanged("next", 2'000'000'000, 0);
    ASSERT_EQ(::rename(pathOf("next").constData(), pathOf("Screenshot 1.png").constData()), 0);
    EXPECT_EQ(scanned(), QList<QByteArray>{"Screenshot 1.png"});
}

TEST_F(ScreenshotFolderTest, NamesMayHoldAnyByteAFileNameMayHave)
{
    QList<QByteArray> names;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/')
            names.append("Screenshot " + QByteArray(1, static_cast<char>(byte)) + ".png");
    }
    names.append("Screenshot \n\t\"'`$(x)\\ 🎉.png");
    names.append("Screenshot" + QByteArray(241, 'x') + ".png"); // 255 bytes
    for (const QByteArray& name : names)
        add(name);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(scanned(), names);
}

TEST_F(ScreenshotFolderTest, WhatIsNoRegularFileIsLeftOut)
{
    ASSERT_EQ(::mkfifo(pathOf("Screenshot fifo.png").constData(), 0600), 0);
    ASSERT_EQ(::mkdir(pathOf("Screenshot.png").constData(), 0700), 0);
    ASSERT_EQ(::symlink("/nowhere", pathOf("Screenshot dangling.png").constData()), 0);
    add("target");
    ASSERT_EQ(::symlink("target", pathOf("Screenshot link.png").constData()), 0);
    const FileDescriptor server(::socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = pathOf("Screenshot socket.png");
    ASSERT_LT(size_t(path.size()), sizeof address.sun_path);
    std::copy(path.begin(), path.end(), address.sun_path);
    ASSERT_EQ(::bind(server.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_TRUE(scanned().isEmpty());
}

TEST_F(ScreenshotFolderTest, AFolderThatIsNotThereHasNoIdentity)
{
    EXPECT_EQ(folder.scan().identity, folder.identity());
    EXPECT_NE(folder.identity(), std::nullopt);
    ScreenshotFolder missing(pathOf("missing"));
    EXPECT_EQ(missing.scan().identity, std::nullopt);
    EXPECT_EQ(missing.identity(), std::nullopt);
    add("file");
    EXPECT_EQ(ScreenshotFolder(pathOf("file")).identity(), std::nullopt);
}

} // namespace
} // namespace tessary
