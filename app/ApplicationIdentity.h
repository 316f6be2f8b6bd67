#pragma once

#include <QString>

namespace tessary {

/// What this program is called on the bus, by its desktop file and by its icon.
[[nodiscard]] inline QString applicationIdentifier()
{
    return QStringLiteral("com.tessary.Tessary");
}

} // namespace tessary
