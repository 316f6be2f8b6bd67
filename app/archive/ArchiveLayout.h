#pragma once

#include "store/ScreenshotRecord.h"

#include <QJsonObject>

namespace tessary {

/// How an exported library lies in its folder: the items in `items.jsonl`, one JSON object a line with the
/// record's property names as keys, and their files in three folders named as in the library. Of the files'
/// paths a line holds the part below the folder, as `Originals/ID.png`.
namespace ArchiveLayout {

inline constexpr QLatin1String kItems("items.jsonl");
inline constexpr QLatin1String kOriginals("Originals");
inline constexpr QLatin1String kThumbnails("Thumbnails");
inline constexpr QLatin1String kAppIcons("App Icons");

/// The record with its three paths cut down to folder and name.
[[nodiscard]] ScreenshotRecord relative(ScreenshotRecord record);
/// One line for the item, with its end. Absent values are written as null, so that every field is there.
[[nodiscard]] QByteArray line(const ScreenshotRecord& record);
/// @returns nothing for a line that is no item.
[[nodiscard]] std::optional<ScreenshotRecord> item(const QByteArray& line);

} // namespace ArchiveLayout

} // namespace tessary
