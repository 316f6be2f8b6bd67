#pragma once

#include <QString>
#include <QStringList>

namespace tessary::bench {

/// The translations in a compiled catalogue of a program's messages, in its order; none when the file is not
/// there. Those with markup or places to fill in are left out.
[[nodiscard]] QStringList translatedMessages(const QString& path);

} // namespace tessary::bench
