#pragma once

#include <QStringView>

namespace tessary {

/// Whether a text is better read with letters of one width: a program, a command, structured data. Looks at
/// its beginning only; prose in any language is none, nor is a single ordinary line.
[[nodiscard]] bool looksLikeCode(QStringView text);

} // namespace tessary
