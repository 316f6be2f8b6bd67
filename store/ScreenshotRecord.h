#pragma once

#include "base/Date.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <optional>
#include <variant>

namespace tessary {

enum class ClipboardContentType { Image = 0, Text = 1 };
/// @returns nothing for a number that names no type.
[[nodiscard]] std::optional<ClipboardContentType> clipboardContentType(qint64 rawValue);

enum class OCRStatus { Pending = 0, Processing = 1, Complete = 2, Failed = 3, Paused = 4 };
/// @returns nothing for a number that names no status.
[[nodiscard]] std::optional<OCRStatus> ocrStatus(qint64 rawValue);

/// What one clipboard change delivered: trimmed text, or the bytes of a PNG.
using ClipboardPayload = std::variant<QString, QByteArray>;

/// One library item, image or text. Copy it, compare it, send it between threads.
struct ScreenshotRecord {
    QUuid id;
    QString contentHash;  ///< SHA-256, 64 lower-case hexadecimal characters; unique in the library.
    QString filename;     ///< For text, its title.
    QString fileType;     ///< Lower-cased extension, or "text"; empty when unknown.
    QString originalPath; ///< Where the item came from; empty for text.
    QString libraryPath;  ///< The copy in the originals folder; empty for text.
    std::optional<QString> thumbnailPath;
    Date capturedAt;
    Date importedAt;
    qint64 pixelWidth = 0;  ///< 0 for text.
    qint64 pixelHeight = 0; ///< 0 for text.
    qint64 fileSize = 0;    ///< Bytes; for text those of its UTF-8.
    std::optional<QString> sourceAppName;
    std::optional<QString> sourceBundleIdentifier;
    std::optional<QString> sourceAppIconPath;
    QString ocrText; ///< Empty until recognised.
    OCRStatus ocrStatus = OCRStatus::Pending;
    std::optional<QString> generatedTitle;
    QStringList tags; ///< In the person's order.
    QString note;
    bool isFavorite = false;
    bool isPinned = false;
    qint64 duplicateCount = 1; ///< How often the content was captured; at least 1.
    ClipboardContentType contentType = ClipboardContentType::Image;
    QString textContent; ///< Empty for images.
    std::optional<Date> lastUsedAt;
    bool isDeleted = false; ///< In the trash.
    std::optional<Date> deletedAt;

    /// `textContent`, `sourceAppName`, the tags, `note` and `filename`, joined with single spaces. Empty
    /// parts are not skipped, so that the parts keep their places.
    [[nodiscard]] QString searchableText() const;

    friend bool operator==(const ScreenshotRecord&, const ScreenshotRecord&) = default;
};

[[nodiscard]] size_t qHash(const ScreenshotRecord& record, size_t seed = 0) noexcept;

/// A JSON object with the property names as keys: identifiers upper-case, dates in seconds since 1970,
/// enumerations as their numbers, absent values left out.
[[nodiscard]] QJsonObject encodeRecord(const ScreenshotRecord& record);
/// The same with every key: absent values are null.
[[nodiscard]] QJsonObject encodeWholeRecord(const ScreenshotRecord& record);
/// @returns nothing when a required key is missing or a value is of the wrong kind.
[[nodiscard]] std::optional<ScreenshotRecord> decodeRecord(const QJsonObject& object);

/// The text form of an item's identity in stores and file names: upper-case, hyphenated, no braces.
[[nodiscard]] QString identifierText(const QUuid& id);

} // namespace tessary

template <>
struct std::hash<tessary::ScreenshotRecord> {
    size_t operator()(const tessary::ScreenshotRecord& record) const noexcept
    {
        return tessary::qHash(record);
    }
};
