#pragma once

#include <QByteArrayView>

namespace tessary {

/// Whether the words that the full-text table makes of a text stand in the text byte for byte, but for the
/// case of ASCII letters: so it is with ASCII, Chinese and Japanese, their punctuation, and emoji. Elsewhere
/// letters lose their accents, change their case beyond ASCII, or are made of several characters.
/// Says no of broken UTF-8, and where it is not known. @param text UTF-8.
[[nodiscard]] bool isPlainText(QByteArrayView text);

} // namespace tessary
