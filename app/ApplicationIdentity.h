#pragma once

#include <QString>

namespace tessary {

/// What this program is called on the bus, by its desktop file and by its icon.
[[nodiscard]] inline QString applicationIdentifier()
{
    return QStringLiteral("com.tessary.Tessary");
}

/// Where on the session bus it can be asked.
[[nodiscard]] inline QString busObjectPath()
{
    return QStringLiteral("/com/tessary/Tessary");
}

[[nodiscard]] inline QString busInterface()
{
    return QStringLiteral("com.tessary.Tessary1");
}

} // namespace tessary
