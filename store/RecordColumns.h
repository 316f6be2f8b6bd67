#pragma once

#include "store/ScreenshotRecord.h"
#include "store/sqlite/SQLiteStatement.h"

#include <array>

namespace tessary {

/// How a record's properties lie in a row of the projection. `kProjectionColumns` is the order in which
/// rows are written and listed; the record store is listed in the same order, by its own names.
constexpr int kRecordColumnCount = 28;
extern const std::array<const char*, kRecordColumnCount> kProjectionColumns;
extern const std::array<const char*, kRecordColumnCount> kEntityAttributes;
constexpr int kTagsColumn = 16;

/// The names separated by ", ", each behind the prefix.
[[nodiscard]] QByteArray columnList(const std::array<const char*, kRecordColumnCount>& names,
                                    const QByteArray& prefix = {});
/// The values of a record in that order, the tags as JSON text.
[[nodiscard]] QList<SQLiteValue> recordBindings(const ScreenshotRecord& record);
/// A row of the projection. Forgiving: what cannot be read becomes a default, and an identifier that
/// cannot be parsed a fresh one. @param maximumTextLength UTF-16 units to which a longer content is cut,
/// or to one fewer where it would end in half a character; what is beyond is not even decoded.
[[nodiscard]] ScreenshotRecord decodeProjectionRow(const SQLiteStatement& row,
                                                   std::optional<qsizetype> maximumTextLength = std::nullopt);

} // namespace tessary
