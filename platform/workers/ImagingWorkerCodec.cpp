#include "platform/workers/ImagingWorkerCodec.h"

#include "base/AtomicFile.h"
#include "workers/imaging/ImagingProtocol.h"

#include <QCborValue>
#include <QLoggingCategory>

#include <cmath>
#include <cstring>

namespace tessary {
namespace {

Q_LOGGING_CATEGORY(lcImaging, "tessary.imaging")

WorkerCommand commandFor(const ImagingWorkerCodec::Options& options)
{
    const QString program =
        options.program.isEmpty() ? workerProgramPath(QStringLiteral("tessary-imaging")) : options.program;
    return {program, {QByteArrayLiteral("--rest-seconds"), QByteArray::number(qint64{options.rest.count()})}};
}

ImageError::Case caseFor(WorkerError::Case which)
{
    switch (which) {
    case WorkerError::Case::TimedOut:
        return ImageError::Case::WorkerTimedOut;
    case WorkerError::Case::TooLarge:
        return ImageError::Case::TooLarge;
    case WorkerError::Case::Failed:
        break;
    }
    return ImageError::Case::WorkerFailed;
}

ImageError::Case caseFor(const QString& errorWord)
{
    if (errorWord == imaging::kTooLarge)
        return ImageError::Case::TooLarge;
    if (errorWord == imaging::kNotAnImage)
        return ImageError::Case::NotAnImage;
    return ImageError::Case::WorkerFailed;
}

/// The worker has read untrusted bytes, so its answers are not trusted either.
[[noreturn]] void throwNonsense()
{
    throw ImageError(ImageError::Case::WorkerFailed, QStringLiteral("nonsensical answer"));
}

QSize sizeIn(const QCborMap& reply)
{
    constexpr qint64 kLargestSide = 10'000'000;
    const qint64 width = reply.value(imaging::kWidth).toInteger();
    const qint64 height = reply.value(imaging::kHeight).toInteger();
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide)
        throwNonsense();
    return {static_cast<int>(width), static_cast<int>(height)};
}

QByteArray bytesIn(const QCborMap& reply)
{
    QByteArray bytes = reply.value(imaging::kBytes).toByteArray();
    if (bytes.isEmpty())
        throwNonsense();
    return bytes;
}

QImage imageIn(const QCborMap& reply, int maximumPixelSize)
{
    const QSize size = sizeIn(reply);
    const QByteArray bytes = bytesIn(reply);
    if (std::max(size.width(), size.height()) > maximumPixelSize ||
        bytes.size() != qint64{size.width()} * size.height() * 4)
        throwNonsense();
    const bool opaque = reply.value(imaging::kOpaque).toBool();
    QImage image(size, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        throw ImageError(ImageError::Case::TooLarge, QStringLiteral("no memory"));
    std::memcpy(image.bits(), bytes.constData(), static_cast<size_t>(bytes.size()));
    return image;
}

/// What a JPEG can hold, which is more than anybody can see.
int clampedSide(int maximumPixelSize)
{
    constexpr int kLargestSide = 65535;
    return std::clamp(maximumPixelSize, 1, kLargestSide);
}

void writeResult(const QString& destination, const QByteArray& bytes)
{
    try {
        writeFileAtomically(destination, bytes, Durability::Process);
    } catch (const FileError& error) {
        throw ImageError(ImageError::Case::WriteFailed,
                         QStringLiteral("file error %1").arg(int(error.which())));
    }
}

} // namespace

ImagingWorkerCodec::ImagingWorkerCodec(Options options)
    : m_deadline(options.deadline),
      m_worker(commandFor(options)),
      m_partWorker(commandFor(options)),
      m_lane(QStringLiteral("com.tessary.imaging")),
      m_partLane(QStringLiteral("com.tessary.imaging.parts"))
{
}

ImagingWorkerCodec::~ImagingWorkerCodec()
{
    // Work still on the lane fails at once instead of holding up the end for its deadline.
    m_worker.shutDown();
    m_partWorker.shutDown();
}

QCborMap ImagingWorkerCodec::request(WorkerProcess& worker, const QCborMap& message) const
{
    std::optional<ImageError> failure;
    try {
        QCborMap reply = worker.request(message, m_deadline);
        const QString word = reply.value(imaging::kError).toString();
        if (word.isEmpty())
            return reply;
        failure.emplace(caseFor(word), reply.value(imaging::kDetail).toString());
    } catch (const WorkerError& error) {
        failure.emplace(caseFor(error.which()), error.detail());
    }
    qCInfo(lcImaging, "request failed, case %d: %ls", int(failure->which()),
           qUtf16Printable(failure->detail()));
    throw *failure;
}

QCoro::Task<QSize> ImagingWorkerCodec::pixelSize(QString path)
{
    const auto work = m_lane.post([this, path] {
        return sizeIn(request({{imaging::kOperation, imaging::kPixelSize}, {imaging::kPath, path}}));
    });
    co_return co_await work;
}

QCoro::Task<> ImagingWorkerCodec::writeThumbnail(QString source, QString destination, int maximumPixelSize,
                                                 double quality)
{
    const int wholeQuality = static_cast<int>(std::lround(std::clamp(quality, 0.01, 1.0) * 100));
    const int side = clampedSide(maximumPixelSize);
    const auto work = m_lane.post([this, source, destination, side, wholeQuality] {
        writeResult(destination, bytesIn(request({{imaging::kOperation, imaging::kThumbnail},
                                                  {imaging::kPath, source},
                                                  {imaging::kMaximumPixelSize, side},
                                                  {imaging::kQuality, wholeQuality}})));
    });
    co_await work;
}

QCoro::Task<QImage> ImagingWorkerCodec::decode(QString path, int maximumPixelSize)
{
    const int side = clampedSide(maximumPixelSize);
    const auto work = m_lane.post([this, path, side] {
        return imageIn(request({{imaging::kOperation, imaging::kDecode},
                                {imaging::kPath, path},
                                {imaging::kMaximumPixelSize, side}}),
                       side);
    });
    co_return co_await work;
}

QCoro::Task<QImage> ImagingWorkerCodec::decodePart(QString path, QRect part, QSize size)
{
    const auto work = m_partLane.post([this, path, part, size] {
        const QCborMap reply = request(m_partWorker, {{imaging::kOperation, imaging::kPart},
                                                      {imaging::kPath, path},
                                                      {imaging::kLeft, part.x()},
                                                      {imaging::kTop, part.y()},
                                                      {imaging::kWidth, part.width()},
                                                      {imaging::kHeight, part.height()},
                                                      {imaging::kScaledWidth, size.width()},
                                                      {imaging::kScaledHeight, size.height()}});
        const QImage image = imageIn(reply, std::max(size.width(), size.height()));
        if (image.size() != size)
            throwNonsense();
        return image;
    });
    co_return co_await work;
}

QCoro::Task<QByteArray> ImagingWorkerCodec::pngFromBitmap(QByteArray bitmap)
{
    const auto work = m_lane.post([this, bitmap] {
        return bytesIn(request({{imaging::kOperation, imaging::kPng}, {imaging::kBytes, bitmap}}));
    });
    co_return co_await work;
}

} // namespace tessary
