#pragma once

#include <QByteArray>
#include <QStringList>

namespace tessary {

/// Tags as a compact JSON array of strings in UTF-8.
[[nodiscard]] QByteArray encodeTags(const QStringList& tags);
/// @returns no tags for anything but a JSON array of strings.
[[nodiscard]] QStringList decodeTags(const QByteArray& json);

} // namespace tessary
