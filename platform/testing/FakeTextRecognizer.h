#pragma once

#include "platform/TextRecognizer.h"
#include "platform/testing/FakeImageCodec.h"

namespace tessary::testing {

/// Reads whatever a test has written. Answers through the event loop as the real one does, and while `gate`
/// is closed not at all.
class FakeTextRecognizer : public TextRecognizer {
public:
    QList<TextObservation> observations;
    std::optional<TextRecognitionError> failure; ///< Makes every request fail while it is set.
    Gate gate;
    QList<TextRecognitionRequest> requests; ///< In order.
    QList<QSize> pictures;                  ///< Their sizes.
    int running = 0;
    int mostRunning = 0; ///< At one time.

    /// What a picture with these lines of text is read as.
    void setLines(const QStringList& lines)
    {
        observations.clear();
        for (const QString& line : lines)
            observations.append({{line}, {}, 1});
    }

    QCoro::Task<QList<TextObservation>> perform(TextRecognitionRequest request, QImage picture) override
    {
        requests.append(request);
        pictures.append(picture.size());
        mostRunning = std::max(mostRunning, ++running);
        co_await NextTurn();
        co_await gate.passed();
        --running;
        if (failure)
            throw TextRecognitionError(*failure);
        const QList<TextObservation> read = observations; // a copy: g++ 12 moves members out
        co_return read;
    }
};

} // namespace tessary::testing
