#include "recognition/OCRService.h"

#include <QCoreApplication>

namespace tessary {

QString OCRService::OCRError::localizedDescription() const
{
    if (m_case == Case::UnreadableImage)
        return QCoreApplication::translate("OCRService", "无法读取图片");
    return QCoreApplication::translate("OCRService", "OCR 未返回结果");
}

OCRService::OCRService(TextRecognizer& recognizer, QStringList recognitionLanguages, bool accurate)
    : m_recognizer(recognizer),
      m_request{accurate ? RecognitionLevel::Accurate : RecognitionLevel::Fast, true,
                std::move(recognitionLanguages)}
{
}

QStringList OCRService::defaultLanguages()
{
    return {QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"), QStringLiteral("en-US"),
            QStringLiteral("ja-JP")};
}

QCoro::Task<QString> OCRService::recognizeText(QImage image)
{
    const QList<TextObservation> observations = co_await recognizeLines(image, std::nullopt);
    co_return text(observations);
}

QCoro::Task<QList<TextObservation>> OCRService::recognizeLines(QImage image,
                                                               std::optional<RecognitionLevel> level)
{
    auto entrance = m_gate.enter(QString());
    const KeyedGate::Pass pass = co_await entrance;
    TextRecognitionRequest request = m_request;
    request.level = level.value_or(request.level);
    QList<TextObservation> observations = co_await m_recognizer.perform(request, image);
    if (observations.isEmpty())
        throw OCRError(OCRError::Case::NoResult);
    co_return observations;
}

QCoro::Task<> OCRService::prepare()
{
    QImage blank(1, 1, QImage::Format_RGB32);
    blank.fill(Qt::white);
    try {
        co_await m_recognizer.perform(m_request, blank);
    } catch (const TextRecognitionError&) {
        co_return;
    }
}

QString OCRService::text(const QList<TextObservation>& observations)
{
    QStringList lines;
    for (const TextObservation& observation : observations)
        if (!observation.candidates.isEmpty())
            lines.append(observation.candidates.first());
    return lines.join(QLatin1Char('\n'));
}

} // namespace tessary
