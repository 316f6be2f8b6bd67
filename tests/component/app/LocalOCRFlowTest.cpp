#include "app/LocalOCRFlow.h"

#include "app/AppRuntime.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"

#include <QCoreApplication>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

const QString kPlain = QStringLiteral("一首古诗的注释");
const QString kBefore = QStringLiteral("before");
const QString kTask = QStringLiteral("TODO 写周报");

class LocalOCRFlowTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    LocalOCRFlowTest()
    {
        permissions.setState({true, true, true});
        QImage screen(100, 80, QImage::Format_RGB32);
        screen.fill(Qt::white);
        screens.screens = {{QStringLiteral("screen"), screen}};
        windows.selector.selection = {{QStringLiteral("screen"), QRectF(0, 0, 100, 80), 1},
                                      QRectF(10, 10, 40, 20)};
        recognizer.setLines({kPlain});
        pasteboard.setText(kBefore);
    }
    ~LocalOCRFlowTest() override
    {
        if (runtime)
            await(runtime->shutDown());
    }

    /// With the settings as they are now.
    void start()
    {
        runtime.emplace(platform, windows);
        QObject::connect(&*runtime, &AppRuntime::lastErrorChanged, &*runtime,
                         [this] { errors.append(runtime->lastError().value_or(QString())); });
    }
    void perform()
    {
        if (!runtime)
            start();
        await(runtime->localOCR().perform());
    }
    void createRemindersAtOnce() { defaults.set(QStringLiteral("autoCreateReminderAfterOCR"), true); }

    testing::FakeWindows windows;
    std::optional<AppRuntime> runtime;
    QStringList errors;
};

TEST_F(LocalOCRFlowTest, PutsTheTextOnTheClipboardAndShowsIt)
{
    perform();
    EXPECT_EQ(pasteboard.text(), kPlain);
    ASSERT_EQ(windows.results.size(), 1);
    EXPECT_EQ(windows.results.first().text, kPlain);
    EXPECT_EQ(windows.results.first().image.size(), QSize(40, 20));
    EXPECT_EQ(windows.results.first().status, OCRReminderStatus{});
    EXPECT_TRUE(reminders.reminders.isEmpty());
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(LocalOCRFlowTest, ATaskIsOfferedAsAReminder)
{
    recognizer.setLines({kTask});
    perform();
    const OCRReminderDraft draft{kTask, kTask, std::nullopt};
    EXPECT_EQ(windows.results.first().status, OCRReminderStatus{OCRReminderStatus::Ready{draft}});
    EXPECT_TRUE(reminders.reminders.isEmpty());
    await(windows.results.first().createReminder(draft));
    ASSERT_EQ(reminders.reminders.size(), 1);
    EXPECT_EQ(reminders.reminders.first().title, kTask);
}

TEST_F(LocalOCRFlowTest, WithTheSettingTheReminderIsThereWhenTheWindowOpens)
{
    createRemindersAtOnce();
    recognizer.setLines({kTask});
    perform();
    EXPECT_EQ(reminders.reminders.size(), 1);
    EXPECT_EQ(windows.results.first().status, OCRReminderStatus{OCRReminderStatus::Created{}});
    recognizer.setLines({kPlain});
    perform();
    EXPECT_EQ(reminders.reminders.size(), 1);
    EXPECT_EQ(windows.results.last().status, OCRReminderStatus{});
}

TEST_F(LocalOCRFlowTest, AReminderThatFailsIsToldInTheWindow)
{
    createRemindersAtOnce();
    recognizer.setLines({kTask});
    reminders.list.reset();
    perform();
    const OCRReminderStatus failed{OCRReminderStatus::Failed{QStringLiteral("未找到可用的默认提醒事项列表")}};
    EXPECT_EQ(windows.results.first().status, failed);
    EXPECT_EQ(pasteboard.text(), kTask);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(LocalOCRFlowTest, NoTextLeavesEverythingAsItWas)
{
    recognizer.observations.clear();
    perform();
    recognizer.observations = {{{QString()}, {}, 0}};
    perform();
    const QString sentence = QStringLiteral("本地 OCR 失败：OCR 未返回结果");
    EXPECT_EQ(errors, (QStringList{sentence, sentence}));
    EXPECT_EQ(pasteboard.text(), kBefore);
    EXPECT_TRUE(windows.results.isEmpty());
}

TEST_F(LocalOCRFlowTest, AFailingRecogniserIsToldWithItsOwnSentence)
{
    recognizer.failure.emplace(TextRecognitionError::Case::WorkerTimedOut);
    perform();
    EXPECT_EQ(errors, QStringList(QStringLiteral("本地 OCR 失败：文字识别超时。")));
    EXPECT_EQ(pasteboard.text(), kBefore);
    EXPECT_TRUE(windows.results.isEmpty());
}

TEST_F(LocalOCRFlowTest, GivingUpAndHavingNoScreenAreSilent)
{
    using Case = RegionSelector::SelectionError::Case;
    for (const Case which : {Case::Cancelled, Case::NoScreen}) {
        windows.selector.failure = which;
        perform();
    }
    EXPECT_TRUE(errors.isEmpty());
    EXPECT_TRUE(windows.results.isEmpty());
    EXPECT_EQ(recognizer.pictures, QList<QSize>(2, QSize(1, 1))); // got ready for more
}

TEST_F(LocalOCRFlowTest, ACaptureThatFailsIsToldWithoutAPrefix)
{
    permissions.setState({});
    perform();
    EXPECT_EQ(errors,
              QStringList(QStringLiteral("未获得屏幕录制权限；本地 OCR 需要此权限，剪贴板记录仍可继续使用")));
}

TEST_F(LocalOCRFlowTest, ASecondStartIsRefusedAndTheFirstGoesOn)
{
    start();
    windows.selector.gate.close();
    auto first = runtime->localOCR().perform();
    ASSERT_TRUE(eventually([&] { return windows.selector.gate.waitingCount() == 1; }));
    perform();
    EXPECT_EQ(errors, QStringList(QStringLiteral("已有本地 OCR 操作正在进行")));
    windows.selector.gate.open();
    await(std::move(first));
    EXPECT_EQ(windows.results.size(), 1);
}

TEST_F(LocalOCRFlowTest, TheLevelIsThatOfTheStartAndTheLanguagesAreFixed)
{
    defaults.set(QStringLiteral("ocrLanguages"), QStringList(QStringLiteral("en-US")));
    start();
    runtime->settings().setAccurateOCR(false);
    runtime->updateOCRConfiguration();
    perform();
    EXPECT_EQ(recognizer.requests.last().level, RecognitionLevel::Accurate);
    EXPECT_EQ(recognizer.requests.last().languages, OCRService::defaultLanguages());
    await(runtime->shutDown());
    runtime.reset();
    windows.selector.failure.reset(); // ending gave it up
    perform();
    EXPECT_EQ(recognizer.requests.last().level, RecognitionLevel::Fast);
}

TEST_F(LocalOCRFlowTest, EndingTheProgramEndsASelection)
{
    start();
    windows.selector.gate.close();
    auto flow = runtime->localOCR().perform();
    ASSERT_TRUE(eventually([&] { return windows.selector.gate.waitingCount() == 1; }));
    await(runtime->shutDown());
    await(std::move(flow));
    EXPECT_TRUE(windows.results.isEmpty());
    EXPECT_TRUE(errors.isEmpty());
    runtime.reset();
}

TEST_F(LocalOCRFlowTest, AFileIsReadWithoutClipboardAndWindow)
{
    start();
    codec.sizes.insert(QStringLiteral("a.png"), QSize(30, 10));
    auto reading = runtime->localOCR().recognizeFile(QStringLiteral("a.png"), RecognitionLevel::Fast);
    const LocalOCRFlow::RecognizedPicture picture = await(std::move(reading));
    EXPECT_EQ(picture.size, QSize(30, 10));
    EXPECT_EQ(OCRService::text(picture.lines), kPlain);
    EXPECT_EQ(recognizer.requests.last().level, RecognitionLevel::Fast);
    EXPECT_EQ(pasteboard.text(), kBefore);
    EXPECT_TRUE(windows.results.isEmpty());
    codec.decodeFailure = ImageError::Case::NotAnImage;
    EXPECT_THROW(await(runtime->localOCR().recognizeFile(QStringLiteral("a.png"), std::nullopt)), ImageError);
}

TEST_F(LocalOCRFlowTest, ARegionIsReadForAnotherProgram)
{
    start();
    const LocalOCRFlow::RecognizedPicture picture = await(runtime->localOCR().recognizeRegion(std::nullopt));
    EXPECT_EQ(picture.size, QSize(40, 20));
    EXPECT_EQ(pasteboard.text(), kBefore);
    windows.selector.failure = RegionSelector::SelectionError::Case::Cancelled;
    EXPECT_THROW(await(runtime->localOCR().recognizeRegion(std::nullopt)), RegionSelector::SelectionError);
}

} // namespace
} // namespace tessary
