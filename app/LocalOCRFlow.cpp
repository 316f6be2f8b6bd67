#include "app/LocalOCRFlow.h"

#include "app/AppSettings.h"
#include "app/WindowPresenter.h"
#include "base/FlowSet.h"
#include "recognition/OCRReminderClassifier.h"
#include "recognition/RecognitionResult.h"

#include <QLoggingCategory>
#include <QScopeGuard>

Q_LOGGING_CATEGORY(lcRecognition, "tessary.recognition")

namespace tessary {
namespace {

constexpr int kLargestSide = 16'384; // of a picture file; larger ones are made smaller

} // namespace

LocalOCRFlow::LocalOCRFlow(Platform platform, WindowPresenter& windows, const AppSettings& settings,
                           FlowSet& flows)
    : m_platform(platform),
      m_windows(windows),
      m_settings(settings),
      m_flows(flows),
      m_screenCaptureService(platform.screenCapture, platform.permissions, windows.regionSelector(), windows,
                             platform.clock),
      m_ocrService(platform.textRecognizer, OCRService::defaultLanguages(), settings.accurateOCR()),
      m_reminderService(platform.reminders)
{
}

QCoro::Task<> LocalOCRFlow::perform()
{
    const FlowSet::Stay stay(m_flows);
    const std::optional<QImage> image = co_await capture();
    if (!image)
        co_return;
    const std::optional<QString> text = co_await recognize(*image);
    if (!text)
        co_return;
    qCInfo(lcRecognition, "a region was recognised");
    co_await copy(*text);
    const std::optional<OCRReminderDraft> draft = OCRReminderClassifier::draft(*text, m_platform.clock.now());
    const OCRReminderStatus status = co_await statusFor(draft);
    if (!m_flows.stopToken().stop_requested())
        present(*text, *image, status);
}

QCoro::Task<std::optional<QImage>> LocalOCRFlow::capture()
{
    try {
        const QImage image = co_await selectedImage();
        co_return image;
    } catch (const RegionSelector::SelectionError&) {
        qCInfo(lcRecognition, "the selection of a region was given up");
    } catch (const std::exception& error) {
        Q_EMIT failed(localizedDescription(error));
    }
    co_return std::nullopt;
}

/// Models are loaded while the person is still dragging.
QCoro::Task<QImage> LocalOCRFlow::selectedImage()
{
    if (!m_screenCaptureService.isCapturing())
        m_flows.add(m_ocrService.prepare());
    return m_screenCaptureService.captureRegionImage();
}

QCoro::Task<std::optional<QString>> LocalOCRFlow::recognize(QImage image)
{
    try {
        const QString text = co_await m_ocrService.recognizeText(image);
        if (text.isEmpty())
            throw OCRService::OCRError(OCRService::OCRError::Case::NoResult);
        co_return text;
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("本地 OCR 失败：") + localizedDescription(error));
    }
    co_return std::nullopt;
}

QCoro::Task<> LocalOCRFlow::copy(QString text)
{
    const FlowSet::Stay stay(m_flows);
    const bool isWritten = co_await m_platform.pasteboard.writeText(text, PasteboardReach::Clipboard);
    if (!isWritten)
        Q_EMIT failed(tr("无法写入剪贴板。"));
}

QCoro::Task<OCRReminderStatus> LocalOCRFlow::statusFor(std::optional<OCRReminderDraft> draft)
{
    if (!draft)
        co_return OCRReminderStatus{};
    if (!m_settings.autoCreateReminderAfterOCR())
        co_return OCRReminderStatus{OCRReminderStatus::Ready{*draft}};
    OCRReminderStatus status{OCRReminderStatus::Created{}};
    try {
        co_await createReminder(*draft);
    } catch (const std::exception& error) {
        status.value = OCRReminderStatus::Failed{localizedDescription(error)};
    }
    co_return status;
}

QCoro::Task<> LocalOCRFlow::createReminder(OCRReminderDraft draft)
{
    const FlowSet::Stay stay(m_flows);
    const auto used = qScopeGuard([this] { Q_EMIT remindersUsed(); });
    co_await m_reminderService.create(draft);
}

void LocalOCRFlow::present(const QString& text, const QImage& image, const OCRReminderStatus& status)
{
    RecognitionResult result;
    result.text = text;
    result.image = image;
    result.status = status;
    result.createReminder = [this](OCRReminderDraft draft) { return createReminder(std::move(draft)); };
    result.copyText = [this](QString edited) { m_flows.add(copy(std::move(edited))); };
    result.now = [this] { return m_platform.clock.now(); };
    m_windows.showRecognitionResult(result);
}

// --- for other programs -----------------------------------------------------

QCoro::Task<LocalOCRFlow::RecognizedPicture>
LocalOCRFlow::recognizeRegion(std::optional<RecognitionLevel> level)
{
    const FlowSet::Stay stay(m_flows);
    const QImage image = co_await selectedImage();
    const QList<TextObservation> lines = co_await m_ocrService.recognizeLines(image, level);
    const RecognizedPicture recognized{image.size(), lines};
    co_return recognized;
}

QCoro::Task<LocalOCRFlow::RecognizedPicture>
LocalOCRFlow::recognizeFile(QString path, std::optional<RecognitionLevel> level)
{
    const FlowSet::Stay stay(m_flows);
    const QImage image = co_await m_platform.imageCodec.decode(path, kLargestSide);
    if (image.isNull())
        throw OCRService::OCRError(OCRService::OCRError::Case::UnreadableImage);
    const QList<TextObservation> lines = co_await m_ocrService.recognizeLines(image, level);
    const RecognizedPicture recognized{image.size(), lines};
    co_return recognized;
}

} // namespace tessary
