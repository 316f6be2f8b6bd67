#pragma once

#include "base/Calendar.h"
#include "store/ScreenshotRecord.h"

namespace tessary {

/// What is told about an item next to its preview, in words.
struct ItemFacts {
    QString kind;       ///< "类型"
    QString extent;     ///< "尺寸与大小"
    QString time;       ///< "复制时间"
    QString source;     ///< "来源 App"
    QString dimensions; ///< "尺寸": pixels or characters; empty where they are not known.
    QString size;       ///< "文件大小"

    friend bool operator==(const ItemFacts&, const ItemFacts&) = default;
};

/// @param isCut whether the record's text is only the beginning of the item's.
[[nodiscard]] ItemFacts itemFacts(const ScreenshotRecord& record, bool isCut, const Calendar& calendar);

/// A number of bytes as a person reads it, in decimal units: "64 B", "0.9 KB", "412 KB", "9.6 MB".
[[nodiscard]] QString byteCountText(qint64 bytes);

} // namespace tessary
