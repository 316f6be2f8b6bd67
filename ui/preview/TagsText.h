#pragma once

#include <QStringList>

namespace tessary {

/// The tags in a text, in its order: split at commas, Chinese ones as well, without the blanks around them,
/// empty ones and repeats.
[[nodiscard]] QStringList splitTags(const QString& text);
/// The text that has those tags.
[[nodiscard]] QString joinedTags(const QStringList& tags);
[[nodiscard]] bool isTagSeparator(QChar character);

} // namespace tessary
