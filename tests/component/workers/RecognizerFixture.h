#pragma once

#include "platform/workers/RecognizerWorker.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QFont>
#include <QPainter>

namespace tessary::testing {

/// A recogniser with the real worker program, and pictures with text for it.
class RecognizerFixture : public ::testing::Test {
protected:
    [[nodiscard]] static RecognizerWorker::Options options()
    {
        return {.program = QStringLiteral(TESSARY_RECOGNIZER_PROGRAM)};
    }
    [[nodiscard]] RecognizerWorker& recognizer() { return *m_recognizer; }
    void useRecognizer(RecognizerWorker::Options changed)
    {
        m_recognizer.reset();
        m_recognizer = std::make_unique<RecognizerWorker>(std::move(changed));
    }

    [[nodiscard]] static QImage blank(int width, int height, QColor colour = Qt::white)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }
    static void write(QImage& image, QPoint baseline, const QString& text, QColor colour = Qt::black)
    {
        constexpr int kPixels = 20;
        QFont font;
        font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Droid Sans Fallback")});
        font.setPixelSize(kPixels);
        QPainter painter(&image);
        painter.setFont(font);
        painter.setPen(colour);
        painter.drawText(baseline, text);
    }

    /// All four languages, as the program asks for them.
    [[nodiscard]] static TextRecognitionRequest request(RecognitionLevel level = RecognitionLevel::Accurate)
    {
        return {.level = level,
                .languages = {QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"), QStringLiteral("en-US"),
                              QStringLiteral("ja-JP")}};
    }
    [[nodiscard]] static TextRecognitionRequest english()
    {
        return {.level = RecognitionLevel::Fast, .languages = {QStringLiteral("en-US")}};
    }
    /// The best readings of the lines.
    [[nodiscard]] QStringList textsIn(const QImage& picture, const TextRecognitionRequest& how = request())
    {
        QStringList texts;
        for (const TextObservation& line : await(recognizer().perform(how, picture)))
            texts.append(line.candidates.value(0));
        return texts;
    }
    /// The error that reading ends with; nothing when it succeeds.
    [[nodiscard]] std::optional<TextRecognitionError> failureOf(const QImage& picture,
                                                                const TextRecognitionRequest& how = english())
    {
        try {
            (void)await(recognizer().perform(how, picture));
        } catch (const TextRecognitionError& error) {
            return error;
        }
        return std::nullopt;
    }
    [[nodiscard]] std::optional<TextRecognitionError::Case> caseOf(const QImage& picture)
    {
        const std::optional<TextRecognitionError> failure = failureOf(picture);
        return failure ? std::optional(failure->which()) : std::nullopt;
    }

    [[nodiscard]] const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
    std::unique_ptr<RecognizerWorker> m_recognizer = std::make_unique<RecognizerWorker>(options());
};

} // namespace tessary::testing
