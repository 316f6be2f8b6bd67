#pragma once

#include "recognition/OCRReminderStatus.h"

#include <QImage>

#include <functional>

#include <qcoro/qcorotask.h>

namespace tessary {

/// What the result window shows, and what it can do.
struct RecognitionResult {
    using CreateReminder = std::function<QCoro::Task<>(OCRReminderDraft)>;

    QString text;
    QImage image; ///< The region at its pixel size; the device pixel ratio is that of its screen.
    OCRReminderStatus status;
    CreateReminder createReminder;         ///< Throws what the person is to be told.
    std::function<void(QString)> copyText; ///< Replaces the clipboard's content by the text.
    std::function<Date()> now;
};

} // namespace tessary
