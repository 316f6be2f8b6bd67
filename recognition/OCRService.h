#pragma once

#include "base/KeyedGate.h"
#include "platform/TextRecognizer.h"

namespace tessary {

/// Turns a picture into plain text. Main thread only; one recognition at a time.
class OCRService {
public:
    class OCRError : public Error {
    public:
        enum class Case {
            UnreadableImage,
            NoResult, ///< There is no text in the picture.
        };
        explicit OCRError(Case which) : m_case(which) {}

        [[nodiscard]] Case which() const noexcept { return m_case; }
        [[nodiscard]] QString localizedDescription() const override;

    private:
        Case m_case;
    };

    /// @param recognitionLanguages BCP 47 tags, the most likely first.
    OCRService(TextRecognizer& recognizer, QStringList recognitionLanguages, bool accurate);

    /// The languages that pictures are read in.
    [[nodiscard]] static QStringList defaultLanguages();

    [[nodiscard]] const QStringList& recognitionLanguages() const { return m_request.languages; }
    [[nodiscard]] RecognitionLevel recognitionLevel() const { return m_request.level; }

    /// The lines, joined by line feeds; may be empty. @throws OCRError, TextRecognitionError.
    [[nodiscard]] QCoro::Task<QString> recognizeText(QImage image);
    /// The same with where each line stands. @param level instead of the service's own.
    /// @throws OCRError, TextRecognitionError.
    [[nodiscard]] QCoro::Task<QList<TextObservation>> recognizeLines(QImage image,
                                                                     std::optional<RecognitionLevel> level);
    /// Has the recogniser load what it needs, while there is time. Fails silently: the recognition will tell.
    [[nodiscard]] QCoro::Task<> prepare();
    /// The best reading of each line that has one, joined by line feeds.
    [[nodiscard]] static QString text(const QList<TextObservation>& observations);

private:
    TextRecognizer& m_recognizer;
    const TextRecognitionRequest m_request;
    KeyedGate m_gate;
};

} // namespace tessary
