#pragma once

#include "platform/Platform.h"
#include "recognition/OCRReminderDraft.h"
#include "recognition/OCRReminderStatus.h"
#include "recognition/OCRService.h"
#include "recognition/ReminderService.h"
#include "recognition/ScreenCaptureService.h"

#include <QObject>

namespace tessary {

class AppSettings;
class FlowSet;
class WindowPresenter;

/// From a region of the screen to text, and from there to the clipboard, a window, and perhaps a reminder.
/// Main thread only.
class LocalOCRFlow : public QObject {
    Q_OBJECT
public:
    struct RecognizedPicture {
        QSize size; ///< In pixels.
        QList<TextObservation> lines;
    };

    /// The recogniser keeps the level that the settings have now.
    LocalOCRFlow(Platform platform, WindowPresenter& windows, const AppSettings& settings, FlowSet& flows);

    /// Lets the person drag a region and shows what was read. A failure is told by `failed`; a selection that
    /// is given up ends it silently.
    [[nodiscard]] QCoro::Task<> perform();
    /// The same region without clipboard, window and reminder. @param level instead of the recogniser's own.
    /// @throws every error on the way, a cancelled selection included.
    [[nodiscard]] QCoro::Task<RecognizedPicture> recognizeRegion(std::optional<RecognitionLevel> level);
    /// Reads the text in a picture file: PNG, JPEG, TIFF or HEIF. @throws ImageError, OCRService::OCRError,
    /// TextRecognitionError.
    [[nodiscard]] QCoro::Task<RecognizedPicture> recognizeFile(QString path,
                                                               std::optional<RecognitionLevel> level);
    /// Ends a selection under way as cancelled.
    void cancel() { m_screenCaptureService.cancel(); }

    [[nodiscard]] const OCRService& ocrService() const { return m_ocrService; }

Q_SIGNALS:
    void failed(const QString& message);
    /// A reminder was created, or the person was asked whether they may be.
    void remindersUsed();

private:
    QCoro::Task<std::optional<QImage>> capture();
    QCoro::Task<QImage> selectedImage();
    QCoro::Task<std::optional<QString>> recognize(QImage image);
    QCoro::Task<> copy(QString text);
    QCoro::Task<OCRReminderStatus> statusFor(std::optional<OCRReminderDraft> draft);
    QCoro::Task<> createReminder(OCRReminderDraft draft);
    void present(const QString& text, const QImage& image, const OCRReminderStatus& status);

    Platform m_platform;
    WindowPresenter& m_windows;
    const AppSettings& m_settings;
    FlowSet& m_flows;
    ScreenCaptureService m_screenCaptureService;
    OCRService m_ocrService;
    ReminderService m_reminderService;
};

} // namespace tessary
