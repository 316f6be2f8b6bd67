#include "recognition/OCRService.h"

#include "platform/testing/FakeTextRecognizer.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

class OCRServiceTest : public ::testing::Test {
protected:
    static QImage picture(int width = 40)
    {
        QImage image(width, 20, QImage::Format_RGB32);
        image.fill(Qt::white);
        return image;
    }

    testing::FakeTextRecognizer recognizer;
    OCRService service{recognizer, OCRService::defaultLanguages(), true};
};

TEST_F(OCRServiceTest, JoinsTheLinesInTheRecognisersOrder)
{
    recognizer.observations = {{{QStringLiteral("下面"), QStringLiteral("下靣")}, QRect(0, 50, 9, 9), 0.5},
                               {{}, QRect(0, 30, 9, 9), 0},
                               {{QStringLiteral("上面")}, QRect(0, 0, 9, 9), 0.9}};
    EXPECT_EQ(await(service.recognizeText(picture())), QStringLiteral("下面\n上面"));
}

TEST_F(OCRServiceTest, APictureWithoutTextHasNoResult)
{
    try {
        await(service.recognizeText(picture()));
        FAIL() << "nothing was thrown";
    } catch (const OCRService::OCRError& error) {
        EXPECT_EQ(error.which(), OCRService::OCRError::Case::NoResult);
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("OCR 未返回结果"));
    }
    recognizer.observations = {{{}, QRect(0, 0, 9, 9), 0}};
    EXPECT_EQ(await(service.recognizeText(picture())), QString());
    EXPECT_EQ(OCRService::OCRError(OCRService::OCRError::Case::UnreadableImage).localizedDescription(),
              QStringLiteral("无法读取图片"));
}

TEST_F(OCRServiceTest, AsksForItsLanguagesInOrderAndWithCorrection)
{
    recognizer.setLines({QStringLiteral("x")});
    await(service.recognizeText(picture()));
    OCRService fast(recognizer, {QStringLiteral("ja-JP")}, false);
    await(fast.recognizeText(picture()));
    ASSERT_EQ(recognizer.requests.size(), 2);
    const QStringList all{QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"), QStringLiteral("en-US"),
                          QStringLiteral("ja-JP")};
    EXPECT_EQ(recognizer.requests.at(0), (TextRecognitionRequest{RecognitionLevel::Accurate, true, all}));
    EXPECT_EQ(recognizer.requests.at(1),
              (TextRecognitionRequest{RecognitionLevel::Fast, true, {QStringLiteral("ja-JP")}}));
}

TEST_F(OCRServiceTest, PassesThePlatformsErrorOnUnchanged)
{
    recognizer.failure.emplace(TextRecognitionError::Case::ModelsMissing,
                               QStringLiteral("tesseract-ocr-chi-sim"));
    try {
        await(service.recognizeText(picture()));
        FAIL() << "nothing was thrown";
    } catch (const TextRecognitionError& error) {
        EXPECT_EQ(error.localizedDescription(),
                  QStringLiteral("缺少文字识别模型，请安装 tesseract-ocr-chi-sim"));
    }
    recognizer.failure.reset();
    recognizer.setLines({QStringLiteral("again")});
    EXPECT_EQ(await(service.recognizeText(picture())), QStringLiteral("again"));
}

TEST_F(OCRServiceTest, ReadsOnePictureAtATime)
{
    recognizer.setLines({QStringLiteral("x")});
    recognizer.gate.close();
    auto first = service.recognizeText(picture(10));
    auto second = service.recognizeText(picture(20));
    ASSERT_TRUE(eventually([&] { return recognizer.gate.waitingCount() == 1; }));
    recognizer.gate.open();
    await(std::move(first));
    await(std::move(second));
    EXPECT_EQ(recognizer.mostRunning, 1);
    EXPECT_EQ(recognizer.pictures, (QList<QSize>{{10, 20}, {20, 20}}));
}

} // namespace
} // namespace tessary
