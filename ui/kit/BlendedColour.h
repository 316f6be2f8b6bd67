#pragma once

#include <QColor>

namespace tessary {

/// A colour on the way from one to another. @param share from 0 to 1.
[[nodiscard]] QColor blended(const QColor& from, const QColor& to, double share);

/// The same colour, not seen; what a fade starts from.
[[nodiscard]] QColor transparent(QColor colour);

} // namespace tessary
