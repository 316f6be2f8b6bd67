#pragma once

#include <QStringList>

namespace tessary {

/// The full-text query for items that hold each of the terms, literally, at the start of a word. Asterisks
/// are dropped, and so is a term of nothing else; the result is empty when no term is left, which SQLite
/// refuses as a query.
[[nodiscard]] QString ftsExpression(const QStringList& terms);

} // namespace tessary
