#pragma once

#include "base/SerialLane.h"
#include "platform/ImageCodec.h"
#include "platform/workers/WorkerProcess.h"

namespace tessary {

/// Reads pictures in the program `tessary-imaging`, started on demand. One request at a time, in order;
/// parts of pictures beside all others.
///
/// The owner has no request pending when it destroys this.
class ImagingWorkerCodec : public ImageCodec {
public:
    struct Options {
        QString program = {}; ///< Empty: looked for by `workerProgramPath`.
        std::chrono::milliseconds deadline = std::chrono::seconds(20);
        std::chrono::seconds rest = std::chrono::seconds(30); ///< After which the worker leaves.
    };

    explicit ImagingWorkerCodec(Options options = defaultOptions());
    ~ImagingWorkerCodec() override;

    [[nodiscard]] QCoro::Task<QSize> pixelSize(QString path) override;
    [[nodiscard]] QCoro::Task<> writeThumbnail(QString source, QString destination, int maximumPixelSize,
                                               double quality) override;
    [[nodiscard]] QCoro::Task<QImage> decode(QString path, int maximumPixelSize) override;
    [[nodiscard]] QCoro::Task<QImage> decodePart(QString path, QRect part, QSize size) override;
    [[nodiscard]] QCoro::Task<QByteArray> pngFromBitmap(QByteArray bitmap) override;

    /// The running worker's process id; nothing while it rests.
    [[nodiscard]] std::optional<pid_t> workerProcessId() const { return m_worker.processId(); }

private:
    static Options defaultOptions() { return {}; }
    /// On the lane. @throws ImageError.
    [[nodiscard]] QCborMap request(const QCborMap& message) { return request(m_worker, message); }
    [[nodiscard]] QCborMap request(WorkerProcess& worker, const QCborMap& message) const;

    const std::chrono::milliseconds m_deadline;
    WorkerProcess m_worker;
    WorkerProcess m_partWorker; // one of its own, since a part at the end of a huge file takes seconds
    SerialLane m_lane;          // last, as the next: their work uses the workers
    SerialLane m_partLane;
};

} // namespace tessary
