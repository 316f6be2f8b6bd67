#include "platform/workers/RecognizerWorker.h"

#include "workers/recognizer/RecognizerProtocol.h"

#include <QCborArray>
#include <QCborValue>
#include <QFile>
#include <QLoggingCategory>
#include <QPainter>

namespace tessary {
namespace {

Q_LOGGING_CATEGORY(lcRecognizer, "tessary.recognizer")

using Case = TextRecognitionError::Case;

WorkerCommand commandFor(const RecognizerWorker::Options& options)
{
    WorkerCommand command{
        options.program.isEmpty() ? workerProgramPath(QStringLiteral("tessary-recognizer")) : options.program,
        {QByteArrayLiteral("--rest-seconds"), QByteArray::number(qint64{options.rest.count()})},
        {QByteArrayLiteral("OMP_THREAD_LIMIT=1")}};
    if (!options.modelsFolder.isEmpty())
        command.arguments << QByteArrayLiteral("--models") << QFile::encodeName(options.modelsFolder);
    return command;
}

Case caseFor(WorkerError::Case which)
{
    switch (which) {
    case WorkerError::Case::TimedOut:
        return Case::WorkerTimedOut;
    case WorkerError::Case::TooLarge:
        return Case::PictureTooLarge;
    case WorkerError::Case::Failed:
        break;
    }
    return Case::WorkerFailed;
}

Case caseFor(const QString& errorWord)
{
    if (errorWord == recognizer::kTooLarge)
        return Case::PictureTooLarge;
    if (errorWord == recognizer::kModelsMissing)
        return Case::ModelsMissing;
    return Case::WorkerFailed;
}

/// Without transparency, rows without padding.
QImage opaque(const QImage& picture)
{
    QImage result = picture;
    if (picture.hasAlphaChannel()) {
        result = QImage(picture.size(), QImage::Format_RGB32);
        result.fill(Qt::white);
        QPainter(&result).drawImage(QPoint(0, 0), picture);
    }
    result.convertTo(QImage::Format_RGB32);
    return result;
}

QCborMap messageFor(const TextRecognitionRequest& request, const QImage& picture)
{
    if (picture.width() > recognizer::kLongestSide || picture.height() > recognizer::kLongestSide ||
        qint64{picture.width()} * picture.height() > recognizer::kMostPixels)
        throw TextRecognitionError(Case::PictureTooLarge,
                                   QStringLiteral("%1 x %2").arg(picture.width()).arg(picture.height()));
    const QImage pixels = opaque(picture);
    if (pixels.isNull())
        throw TextRecognitionError(Case::PictureTooLarge, QStringLiteral("no memory"));
    return {{recognizer::kWidth, pixels.width()},
            {recognizer::kHeight, pixels.height()},
            {recognizer::kPixels,
             QByteArray(reinterpret_cast<const char*>(pixels.constBits()), pixels.sizeInBytes())},
            {recognizer::kLanguages, QCborArray::fromStringList(request.languages)},
            {recognizer::kFast, request.level == RecognitionLevel::Fast},
            {recognizer::kCorrection, request.usesLanguageCorrection}};
}

/// The worker has read untrusted pixels, so its answers are not trusted either.
QList<TextObservation> observationsIn(const QCborMap& reply)
{
    const QCborValue lines = reply.value(recognizer::kLines);
    if (!lines.isArray())
        throw TextRecognitionError(Case::WorkerFailed, QStringLiteral("nonsensical answer"));
    QList<TextObservation> observations;
    const QCborArray entries = lines.toArray();
    for (const auto& entry : entries) {
        const QCborMap line = entry.toMap();
        const auto number = [&](QLatin1String name) {
            return int(std::clamp<qint64>(line.value(name).toInteger(), 0, recognizer::kLongestSide));
        };
        observations.append(
            {.candidates = {line.value(recognizer::kText).toString()},
             .box = QRect(number(recognizer::kLeft), number(recognizer::kTop), number(recognizer::kWidth),
                          number(recognizer::kHeight)),
             .confidence = std::clamp(line.value(recognizer::kConfidence).toDouble(), 0.0, 1.0)});
    }
    return observations;
}

} // namespace

RecognizerWorker::RecognizerWorker(Options options)
    : m_deadline(options.deadline),
      m_worker(commandFor(options)),
      m_lane(QStringLiteral("com.tessary.recognizer"))
{
}

RecognizerWorker::~RecognizerWorker()
{
    // Work still on the lane fails at once instead of holding up the end for its deadline.
    m_worker.shutDown();
}

QList<TextObservation> RecognizerWorker::recognize(const TextRecognitionRequest& request, QImage picture)
{
    std::optional<TextRecognitionError> failure;
    try {
        QCborMap message = messageFor(request, std::exchange(picture, QImage()));
        const QCborMap reply = m_worker.request(message, m_deadline);
        const QString word = reply.value(recognizer::kError).toString();
        if (word.isEmpty())
            return observationsIn(reply);
        failure.emplace(caseFor(word), reply.value(recognizer::kDetail).toString());
    } catch (const WorkerError& error) {
        failure.emplace(caseFor(error.which()), error.detail());
    }
    qCInfo(lcRecognizer, "request failed, case %d: %ls", int(failure->which()),
           qUtf16Printable(failure->detail()));
    throw *failure;
}

QCoro::Task<QList<TextObservation>> RecognizerWorker::perform(TextRecognitionRequest request, QImage picture)
{
    if (picture.isNull() || picture.size().isEmpty())
        co_return QList<TextObservation>();
    const auto work = m_lane.post([this, request, picture] { return recognize(request, picture); });
    co_return co_await work;
}

} // namespace tessary
