#include "platform/testing/FakeImageCodec.h"
#include "tests/session/x11/PasteboardFixture.h"

#include <QBuffer>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::Requestor;

class X11PasteboardWritingTest : public testing::PasteboardFixture {
protected:
    static QByteArray jpegOf(const QImage& image)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG", 90);
        return bytes;
    }
    /// More than any server takes in one request, every piece different.
    static QString longText(qsizetype bytes)
    {
        QString text;
        text.reserve(bytes);
        for (int line = 0; text.size() < bytes; ++line)
            text += QStringLiteral("line %1\n").arg(line);
        return text;
    }
};

TEST_F(X11PasteboardWritingTest, ATextArrivesInEveryTextTarget)
{
    const QString text = QStringLiteral("Grüße, 世界");
    ASSERT_TRUE(write(text));
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(xclipTarget(target), text.toUtf8()) << target;
    EXPECT_EQ(xclipTarget("STRING"), QByteArray("Gr\xfc\xdf"
                                                "e, ??"));
}

TEST_F(X11PasteboardWritingTest, TheTargetsSayWhatThereIs)
{
    ASSERT_TRUE(write(QStringLiteral("x")));
    Requestor requestor;
    EXPECT_EQ(requestor.targets(),
              (QList<QByteArray>{"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING",
                                 "text/plain;charset=utf-8", "text/plain", "STRING", "TEXT"}));
    EXPECT_FALSE(requestor.convert("image/png"));
    EXPECT_FALSE(requestor.convert("NO_SUCH_TARGET"));
    const auto time = requestor.paste("TIMESTAMP");
    ASSERT_TRUE(time);
    EXPECT_EQ(time->type, "INTEGER");
    EXPECT_NE(time->bytes, QByteArray(4, '\0'));
}

TEST_F(X11PasteboardWritingTest, ATextForTerminalsIsInTheSelectionAsWell)
{
    ASSERT_TRUE(write(QStringLiteral("first"), PasteboardReach::ClipboardAndSelection));
    EXPECT_EQ(xclipSelection("primary"), "first");
    ASSERT_TRUE(write(QStringLiteral("second")));
    EXPECT_EQ(xclipSelection("primary"), "first");
    EXPECT_EQ(xclipSelection("clipboard"), "second");
}

TEST_F(X11PasteboardWritingTest, TwentyMegabytesArriveInPieces)
{
    const QString text = longText(20'000'000);
    ASSERT_TRUE(write(text));
    EXPECT_EQ(xclipTarget("UTF8_STRING"), text.toUtf8());
    Requestor requestor;
    const auto value = requestor.paste("UTF8_STRING");
    ASSERT_TRUE(value);
    EXPECT_TRUE(value->wasIncremental);
    EXPECT_EQ(value->bytes, text.toUtf8());
}

TEST_F(X11PasteboardWritingTest, AnEmptyTextAndOneOfExactlyAPieceArrive)
{
    Requestor requestor;
    for (const qsizetype size : {qsizetype{0}, qsizetype{262143}, qsizetype{262144}, qsizetype{262145}}) {
        ASSERT_TRUE(write(QString(size, u'x')));
        const auto value = requestor.paste("UTF8_STRING");
        ASSERT_TRUE(value) << size;
        EXPECT_EQ(value->bytes.size(), size);
        EXPECT_EQ(value->wasIncremental, size > 262144);
    }
}

TEST_F(X11PasteboardWritingTest, SeveralAreServedAtOnceWhileOneIsStuck)
{
    const QString text = longText(3'000'000);
    ASSERT_TRUE(write(text));
    Requestor stuck;
    ASSERT_TRUE(stuck.takeFirstPieces("UTF8_STRING", 2));
    Requestor gone;
    ASSERT_TRUE(gone.takeFirstPieces("UTF8_STRING", 1));
    gone.destroyWindow();
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < 4; ++i) {
        clients.push_back(std::make_unique<QProcess>());
        clients.back()->start(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                                        QStringLiteral("clipboard"), QStringLiteral("-t"),
                                                        QStringLiteral("UTF8_STRING")});
    }
    for (const auto& client : clients) {
        ASSERT_TRUE(eventually([&] { return client->state() == QProcess::NotRunning; }));
        EXPECT_EQ(client->readAllStandardOutput(), text.toUtf8());
    }
}

TEST_F(X11PasteboardWritingTest, TheNextContentsDoNotDisturbATransferUnderWay)
{
    const QString text = longText(2'000'000);
    ASSERT_TRUE(write(text));
    Requestor slow;
    ASSERT_TRUE(slow.convert("UTF8_STRING"));
    ASSERT_TRUE(write(QStringLiteral("next")));
    takeAway("clipboard", "another program's");
    const auto value = slow.take("P:UTF8_STRING");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->bytes, text.toUtf8());
}

TEST_F(X11PasteboardWritingTest, MultipleAnswersEachTargetAndMarksTheRefused)
{
    ASSERT_TRUE(write(longText(600'000)));
    Requestor requestor;
    const auto properties = requestor.convertMultiple({"TIMESTAMP", "image/png", "TARGETS", "text/plain"});
    ASSERT_TRUE(properties);
    EXPECT_EQ(*properties, (QList<QByteArray>{"P:TIMESTAMP", "None", "P:TARGETS", "P:text/plain"}));
    const auto value = requestor.take("P:text/plain");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->bytes, longText(600'000).toUtf8());
    const auto targets = requestor.take("P:TARGETS");
    ASSERT_TRUE(targets);
    EXPECT_EQ(targets->type, "ATOM");
}

TEST_F(X11PasteboardWritingTest, ARequestFromBeforeTheWriteIsRefused)
{
    Requestor requestor;
    const xcb_timestamp_t before = requestor.serverTime();
    while (requestor.serverTime() == before) {
    }
    ASSERT_TRUE(write(QStringLiteral("new")));
    EXPECT_FALSE(requestor.convert("UTF8_STRING", before));
    EXPECT_TRUE(requestor.convert("UTF8_STRING", requestor.serverTime()));
}

TEST_F(X11PasteboardWritingTest, APictureArrivesByteForByteEvenWhenItsFileIsDeleted)
{
    const QByteArray png = testing::pngOf(testing::picture(1500, 1100));
    const QString path = save("picture.png", png);
    ASSERT_TRUE(writeFile(path));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(xclipTarget("image/png"), png);
    Requestor requestor;
    EXPECT_EQ(requestor.targets().mid(4), QList<QByteArray>{"image/png"});
}

TEST_F(X11PasteboardWritingTest, AJpegIsOfferedAsItIsAndAsPng)
{
    const QImage image = testing::picture(640, 480);
    const QByteArray jpeg = jpegOf(image);
    ASSERT_TRUE(writeFile(save("photo.jpg", jpeg)));
    EXPECT_EQ(xclipTarget("image/jpeg"), jpeg);
    const QByteArray png = xclipTarget("image/png");
    const QImage made = QImage::fromData(png, "PNG");
    EXPECT_EQ(made.convertToFormat(QImage::Format_RGB32),
              QImage::fromData(jpeg, "JPEG").convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(xclipTarget("image/png"), png);
}

TEST_F(X11PasteboardWritingTest, APictureOfWhichNoPngCanBeMadeIsStillOfferedAsItIs)
{
    testing::FakeImageCodec failing;
    failing.pngFailure = ImageError::Case::WorkerTimedOut;
    X11Pasteboard other(failing);
    const QByteArray jpeg = jpegOf(testing::picture(640, 480));
    const QString path = save("photo.jpg", jpeg);
    ASSERT_TRUE(await(other.writeImage(path, PasteboardReach::Clipboard)));
    EXPECT_EQ(xclipTarget("image/png"), QByteArray());
    EXPECT_EQ(xclipTarget("image/jpeg"), jpeg);
    failing.pngFailure.reset();
    failing.png = "made at the second attempt";
    EXPECT_EQ(xclipTarget("image/png"), failing.png);
}

TEST_F(X11PasteboardWritingTest, AFileThatIsNoPictureLeavesTheContentsAlone)
{
    ASSERT_TRUE(write(QStringLiteral("kept")));
    const qint64 count = pasteboard->changeCount();
    EXPECT_FALSE(writeFile(folder.file(QStringLiteral("missing.png"))));
    EXPECT_FALSE(writeFile(save("text.png", "not a picture")));
    EXPECT_FALSE(writeFile(save("empty.png", "")));
    EXPECT_FALSE(writeFile(save("half.png", testing::pngOf(testing::picture(40, 40)).left(20))));
    EXPECT_FALSE(writeFile(folder.path()));
    const QString locked = save("locked.png", testing::pngOf(testing::picture(40, 40)));
    QFile::setPermissions(locked, {});
    if (!QFile(locked).open(QIODevice::ReadOnly)) { // root reads everything
        EXPECT_FALSE(writeFile(locked));
    }
    EXPECT_EQ(xclipTarget("UTF8_STRING"), "kept");
    EXPECT_EQ(pasteboard->changeCount(), count);
}

TEST_F(X11PasteboardWritingTest, OurOwnTextAndPictureComeBackAsTheyWere)
{
    pasteboard->setFetching(true);
    const qint64 before = pasteboard->changeCount();
    const QString text = longText(20'000'000);
    ASSERT_TRUE(write(text));
    ASSERT_TRUE(eventually([&] { return pasteboard->changeCount() == before + 1; }));
    EXPECT_EQ(await(pasteboard->data(before + 1, PasteboardType::Text)), text.toUtf8());
    EXPECT_EQ(await(pasteboard->data(before + 1, PasteboardType::Png)), std::nullopt);
    pasteboard->release(before + 1);
    const QByteArray png = testing::pngOf(testing::picture(1500, 1100));
    ASSERT_TRUE(writeFile(save("picture.png", png)));
    ASSERT_TRUE(eventually([&] { return pasteboard->changeCount() == before + 2; }));
    EXPECT_EQ(await(pasteboard->data(before + 2, PasteboardType::Png)), png);
}

TEST_F(X11PasteboardWritingTest, OurOwnJpegComesBackAsAPng)
{
    pasteboard->setFetching(true);
    const QImage image = testing::picture(640, 480);
    ASSERT_TRUE(writeFile(save("photo.jpg", jpegOf(image))));
    ASSERT_TRUE(eventually([&] { return pasteboard->changeCount() == 1; }));
    const auto png = await(pasteboard->data(1, PasteboardType::Png));
    ASSERT_TRUE(png);
    EXPECT_EQ(QImage::fromData(*png, "PNG").size(), image.size());
}

TEST_F(X11PasteboardWritingTest, AfterAnotherProgramCopiedOnlyItsContentsAreThere)
{
    ASSERT_TRUE(write(QStringLiteral("ours"), PasteboardReach::ClipboardAndSelection));
    takeAway("clipboard", "theirs");
    EXPECT_EQ(xclipSelection("clipboard"), "theirs");
    EXPECT_EQ(xclipSelection("primary"), "ours");
    ASSERT_TRUE(write(QStringLiteral("ours again")));
    EXPECT_EQ(xclipSelection("clipboard"), "ours again");
}

TEST_F(X11PasteboardWritingTest, ARequestorThatStopsTakingIsGivenUp)
{
    X11Pasteboard::Limits limits;
    limits.writing.patience = 200ms;
    X11Pasteboard impatient(codec, {}, limits);
    const QString text = longText(2'000'000);
    ASSERT_TRUE(await(impatient.writeText(text, PasteboardReach::Clipboard)));
    Requestor stuck;
    ASSERT_TRUE(stuck.takeFirstPieces("UTF8_STRING", 1));
    // The transfer is over once the owner no longer follows the window's properties.
    ASSERT_TRUE(eventually([&] { return stuck.watchers() == 1; }));
    EXPECT_EQ(xclipTarget("UTF8_STRING"), text.toUtf8());
}

} // namespace
} // namespace tessary
