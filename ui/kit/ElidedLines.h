#pragma once

#include <QFont>
#include <QString>

namespace tessary {

/// The text broken into lines of that width, joined by line feeds; what does not fit into that many lines
/// is replaced by an ellipsis.
[[nodiscard]] QString elidedLines(const QString& text, const QFont& font, int width, int maximumLines);

} // namespace tessary
