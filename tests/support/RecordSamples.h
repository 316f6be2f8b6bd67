#pragma once

#include "base/ContentHash.h"
#include "store/ScreenshotRecord.h"

namespace tessary::testing {

/// A text item as an import makes it.
[[nodiscard]] inline ScreenshotRecord textRecord(const QString& text, double capturedAt = 1772701623.25)
{
    ScreenshotRecord record;
    record.id = QUuid::createUuid();
    record.contentHash = contentHash(text.toUtf8());
    record.filename = text.left(80);
    record.fileType = QStringLiteral("text");
    record.capturedAt = Date{capturedAt};
    record.importedAt = Date{capturedAt};
    record.fileSize = text.toUtf8().size();
    record.ocrStatus = OCRStatus::Complete;
    record.generatedTitle = record.filename;
    record.contentType = ClipboardContentType::Text;
    record.textContent = text;
    return record;
}

/// A picture without files.
[[nodiscard]] inline ScreenshotRecord pictureRecord(double capturedAt, qint64 fileSize)
{
    ScreenshotRecord record = textRecord(QUuid::createUuid().toString(), capturedAt);
    record.fileType = QStringLiteral("png");
    record.fileSize = fileSize;
    record.contentType = ClipboardContentType::Image;
    record.textContent.clear();
    return record;
}

/// An item in which every property has a value that is not its default.
[[nodiscard]] inline ScreenshotRecord fullRecord()
{
    ScreenshotRecord record = textRecord(QStringLiteral("完整 record"), 1772701623.1234567);
    record.fileType = QStringLiteral("png");
    record.originalPath = QStringLiteral("/pictures/截屏 1.png");
    record.libraryPath = QStringLiteral("/library/Originals/A.png");
    record.thumbnailPath = QStringLiteral("/library/Thumbnails/A.jpg");
    record.importedAt = Date{1772701624.000000119};
    record.pixelWidth = 4000;
    record.pixelHeight = 3000;
    record.fileSize = 5'000'000'000;
    record.sourceAppName = QStringLiteral("文本编辑器");
    record.sourceBundleIdentifier = QStringLiteral("org.gnome.TextEditor");
    record.sourceAppIconPath = QStringLiteral("/library/App Icons/A.png");
    record.ocrText = QStringLiteral("recognised\ntext");
    record.ocrStatus = OCRStatus::Paused;
    record.tags = {QStringLiteral("工作"), QStringLiteral("with \"quotes\", commas")};
    record.note = QStringLiteral("a note");
    record.isFavorite = true;
    record.isPinned = true;
    record.duplicateCount = 7;
    record.lastUsedAt = Date{1772800000.5};
    record.isDeleted = true;
    record.deletedAt = Date{1772800001.75};
    return record;
}

} // namespace tessary::testing
