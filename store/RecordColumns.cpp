#include "store/RecordColumns.h"

#include "store/TagsCoding.h"

namespace tessary {

const std::array<const char*, kRecordColumnCount> kProjectionColumns{"id",
                                                                     "content_hash",
                                                                     "filename",
                                                                     "original_path",
                                                                     "library_path",
                                                                     "thumbnail_path",
                                                                     "captured_at",
                                                                     "imported_at",
                                                                     "pixel_width",
                                                                     "pixel_height",
                                                                     "file_size",
                                                                     "source_app_name",
                                                                     "source_bundle_id",
                                                                     "source_app_icon_path",
                                                                     "ocr_text",
                                                                     "ocr_status",
                                                                     "tags_json",
                                                                     "note",
                                                                     "is_favorite",
                                                                     "last_used_at",
                                                                     "is_deleted",
                                                                     "deleted_at",
                                                                     "file_type",
                                                                     "generated_title",
                                                                     "is_pinned",
                                                                     "duplicate_count",
                                                                     "content_type",
                                                                     "content_text"};

const std::array<const char*, kRecordColumnCount> kEntityAttributes{"id",
                                                                    "contentHash",
                                                                    "filename",
                                                                    "originalPath",
                                                                    "libraryPath",
                                                                    "thumbnailPath",
                                                                    "capturedAt",
                                                                    "importedAt",
                                                                    "pixelWidth",
                                                                    "pixelHeight",
                                                                    "fileSize",
                                                                    "sourceAppName",
                                                                    "sourceBundleIdentifier",
                                                                    "sourceAppIconPath",
                                                                    "ocrText",
                                                                    "ocrStatus",
                                                                    "tagsData",
                                                                    "note",
                                                                    "isFavorite",
                                                                    "lastUsedAt",
                                                                    "isDeleted",
                                                                    "deletedAt",
                                                                    "fileType",
                                                                    "generatedTitle",
                                                                    "isPinned",
                                                                    "duplicateCount",
                                                                    "contentType",
                                                                    "textContent"};

QByteArray columnList(const std::array<const char*, kRecordColumnCount>& names, const QByteArray& prefix)
{
    QByteArrayList list;
    for (const char* name : names)
        list.append(prefix + name);
    return list.join(", ");
}

QList<SQLiteValue> recordBindings(const ScreenshotRecord& r)
{
    return {identifierText(r.id),
            r.contentHash,
            r.filename,
            r.originalPath,
            r.libraryPath,
            sqliteValue(r.thumbnailPath),
            sqliteValue(r.capturedAt),
            sqliteValue(r.importedAt),
            r.pixelWidth,
            r.pixelHeight,
            r.fileSize,
            sqliteValue(r.sourceAppName),
            sqliteValue(r.sourceBundleIdentifier),
            sqliteValue(r.sourceAppIconPath),
            r.ocrText,
            static_cast<qint64>(r.ocrStatus),
            QString::fromUtf8(encodeTags(r.tags)),
            r.note,
            sqliteValue(r.isFavorite),
            sqliteValue(r.lastUsedAt),
            sqliteValue(r.isDeleted),
            sqliteValue(r.deletedAt),
            r.fileType,
            sqliteValue(r.generatedTitle),
            sqliteValue(r.isPinned),
            r.duplicateCount,
            static_cast<qint64>(r.contentType),
            r.textContent};
}

ScreenshotRecord decodeProjectionRow(const SQLiteStatement& row, std::optional<qsizetype> maximumTextLength)
{
    constexpr int kContentColumn = 27;
    ScreenshotRecord r;
    r.id = QUuid::fromString(row.text(0));
    if (r.id.isNull())
        r.id = QUuid::createUuid();
    r.contentHash = row.text(1);
    r.filename = row.text(2);
    r.originalPath = row.text(3);
    r.libraryPath = row.text(4);
    r.thumbnailPath = row.optionalText(5);
    r.capturedAt = Date{row.real(6)};
    r.importedAt = Date{row.real(7)};
    r.pixelWidth = row.integer(8);
    r.pixelHeight = row.integer(9);
    r.fileSize = row.integer(10);
    r.sourceAppName = row.optionalText(11);
    r.sourceBundleIdentifier = row.optionalText(12);
    r.sourceAppIconPath = row.optionalText(13);
    r.ocrText = row.text(14);
    r.ocrStatus = ocrStatus(row.integer(15)).value_or(OCRStatus::Pending);
    r.tags = decodeTags(row.bytes(kTagsColumn).toByteArray());
    r.note = row.text(17);
    r.isFavorite = row.integer(18) != 0;
    r.lastUsedAt = row.optionalDate(19);
    r.isDeleted = row.integer(20) != 0;
    r.deletedAt = row.optionalDate(21);
    r.fileType = row.text(22);
    r.generatedTitle = row.optionalText(23);
    r.isPinned = row.integer(24) != 0;
    r.duplicateCount = std::max<qint64>(1, row.integer(25));
    r.contentType = row.integer(26) == 1 ? ClipboardContentType::Text : ClipboardContentType::Image;
    r.textContent =
        maximumTextLength ? row.textPrefix(kContentColumn, *maximumTextLength) : row.text(kContentColumn);
    return r;
}

} // namespace tessary
