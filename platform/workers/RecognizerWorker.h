#pragma once

#include "base/SerialLane.h"
#include "platform/TextRecognizer.h"
#include "platform/workers/WorkerProcess.h"

namespace tessary {

/// Reads text in the program `tessary-recognizer`, started on demand. One request at a time, in order.
///
/// The owner has no request pending when it destroys this.
class RecognizerWorker : public TextRecognizer {
public:
    struct Options {
        QString program = {};      ///< Empty: looked for by `workerProgramPath`.
        QString modelsFolder = {}; ///< Empty: where the engine's packages put the models.
        std::chrono::milliseconds deadline = std::chrono::seconds(20);
        std::chrono::seconds rest = std::chrono::seconds(60); ///< After which the worker leaves.
    };

    explicit RecognizerWorker(Options options = defaultOptions());
    ~RecognizerWorker() override;

    [[nodiscard]] QCoro::Task<QList<TextObservation>> perform(TextRecognitionRequest request,
                                                              QImage picture) override;

    /// The running worker's process id; nothing while it rests.
    [[nodiscard]] std::optional<pid_t> workerProcessId() const { return m_worker.processId(); }

private:
    static Options defaultOptions() { return {}; }
    /// On the lane. @throws TextRecognitionError.
    [[nodiscard]] QList<TextObservation> recognize(const TextRecognitionRequest& request, QImage picture);

    const std::chrono::milliseconds m_deadline;
    WorkerProcess m_worker;
    SerialLane m_lane; // last: its work uses the worker
};

} // namespace tessary
