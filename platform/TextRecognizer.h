#pragma once

#include "base/Error.h"

#include <QImage>
#include <QRect>
#include <QStringList>

#include <qcoro/qcorotask.h>

namespace tessary {

enum class RecognitionLevel {
    Accurate, ///< May try several scripts.
    Fast,     ///< One pass.
};

/// How to read a picture.
struct TextRecognitionRequest {
    RecognitionLevel level = RecognitionLevel::Accurate;
    bool usesLanguageCorrection = true;
    /// BCP 47 tags, the most likely first: zh-Hans, zh-Hant, en-US, ja-JP. Others are passed over.
    QStringList languages;

    friend bool operator==(const TextRecognitionRequest&, const TextRecognitionRequest&) = default;
};

/// One line of text that was found.
struct TextObservation {
    QStringList candidates; ///< Readings of the line, the best first; may be empty.
    QRect box;              ///< In pixels of the picture.
    double confidence = 0;  ///< Of the best, 0 to 1.

    friend bool operator==(const TextObservation&, const TextObservation&) = default;
};

class TextRecognitionError : public Error {
public:
    enum class Case {
        ModelsMissing,   ///< No language model that the request could use is installed.
        PictureTooLarge, ///< More pixels than are read, or no memory for them.
        WorkerFailed,    ///< The recogniser's process crashed or could not be started.
        WorkerTimedOut,  ///< No answer in 20 s.
    };
    /// @param detail for the log; of ModelsMissing the Debian packages that would help, which the person
    /// reads.
    explicit TextRecognitionError(Case which, QString detail = {})
        : m_case(which),
          m_detail(std::move(detail))
    {
    }

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& detail() const noexcept { return m_detail; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_detail;
};

/// Reads the text in pictures, on this machine. Main thread only; the work happens elsewhere.
class TextRecognizer {
public:
    virtual ~TextRecognizer() = default;
    /// @returns the lines in reading order; empty when there is no text. @throws TextRecognitionError.
    [[nodiscard]] virtual QCoro::Task<QList<TextObservation>> perform(TextRecognitionRequest request,
                                                                      QImage picture) = 0;
};

} // namespace tessary
