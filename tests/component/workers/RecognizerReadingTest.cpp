#include "tests/component/workers/RecognizerFixture.h"

namespace tessary {
namespace {

using namespace testing;

/// What the recogniser makes of pictures, with the real engine.
class RecognizerReadingTest : public RecognizerFixture {};

TEST_F(RecognizerReadingTest, ReadsTwoLinesInTheirOrder)
{
    QImage picture = blank(420, 110);
    write(picture, {20, 40}, QStringLiteral("The first line of text"));
    write(picture, {20, 80}, QStringLiteral("and the second one"));
    const QList<TextObservation> lines = await(recognizer().perform(english(), picture));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].candidates, QStringList{QStringLiteral("The first line of text")});
    EXPECT_EQ(lines[1].candidates, QStringList{QStringLiteral("and the second one")});
    EXPECT_LT(lines[0].box.bottom(), lines[1].box.top());
    EXPECT_TRUE(picture.rect().contains(lines[1].box));
    EXPECT_GT(lines[0].confidence, 0.9);
    EXPECT_LE(lines[0].confidence, 1.0);
}

TEST_F(RecognizerReadingTest, ReadsBothPolaritiesInOnePictureAndKeepsRealBlanks)
{
    QImage picture = blank(560, 120);
    QPainter(&picture).fillRect(0, 60, 560, 60, QColor(20, 40, 90));
    write(picture, {20, 38}, QStringLiteral("请在重新启动之前安装 Linux 内核更新"));
    write(picture, {20, 98}, QStringLiteral("您可以打开系统设置并检查网络"), QColor(230, 230, 240));
    EXPECT_EQ(textsIn(picture), (QStringList{QStringLiteral("请在重新启动之前安装 Linux 内核更新"),
                                             QStringLiteral("您可以打开系统设置并检查网络")}));
}

TEST_F(RecognizerReadingTest, FindsOutThatAPictureIsInAnotherScriptThanTheFirst)
{
    QImage picture = blank(560, 60);
    write(picture, {20, 38}, QStringLiteral("歡迎使用系統設定，請開啟網路與聲音選項"));
    EXPECT_EQ(textsIn(picture), QStringList{QStringLiteral("歡迎使用系統設定，請開啟網路與聲音選項")});
}

TEST_F(RecognizerReadingTest, ReadsTransparentPicturesAsIfOnWhite)
{
    QImage picture(300, 60, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    write(picture, {20, 38}, QStringLiteral("Black on nothing"));
    EXPECT_EQ(textsIn(picture, english()), QStringList{QStringLiteral("Black on nothing")});
}

TEST_F(RecognizerReadingTest, FindsNoTextWhereThereIsNone)
{
    QImage boxes = blank(640, 400, QColor(240, 240, 240));
    QPainter(&boxes).fillRect(40, 40, 300, 200, Qt::darkBlue);
    for (const QImage& picture : {blank(640, 480), blank(1, 1), blank(1, 1, Qt::black), blank(1, 900), boxes})
        EXPECT_EQ(textsIn(picture), QStringList());
    EXPECT_EQ(textsIn(QImage()), QStringList());
}

TEST_F(RecognizerReadingTest, ReadsAVeryWidePicture)
{
    QImage picture = blank(8000, 200);
    write(picture, {100, 90}, QStringLiteral("Far left"));
    write(picture, {7700, 90}, QStringLiteral("Far right"));
    EXPECT_EQ(textsIn(picture, english()),
              (QStringList{QStringLiteral("Far left"), QStringLiteral("Far right")}));
}

TEST_F(RecognizerReadingTest, ReadsWithoutDictionaries)
{
    QImage picture = blank(300, 60);
    write(picture, {20, 38}, QStringLiteral("Plain words"));
    TextRecognitionRequest how = english();
    how.usesLanguageCorrection = false;
    EXPECT_EQ(textsIn(picture, how), QStringList{QStringLiteral("Plain words")});
}

TEST_F(RecognizerReadingTest, RefusesPicturesThatAreTooLarge)
{
    EXPECT_EQ(caseOf(blank(40000, 1)), TextRecognitionError::Case::PictureTooLarge);
    EXPECT_EQ(caseOf(blank(6000, 6000)), TextRecognitionError::Case::PictureTooLarge);
    EXPECT_EQ(recognizer().workerProcessId(), std::nullopt);
}

} // namespace
} // namespace tessary
