#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace tessary {

/// The first line that is not blank, trimmed and cut to its first 80 characters as a person counts them;
/// nothing for a blank text. Looks no further than it has to.
[[nodiscard]] std::optional<QString> titleOf(QStringView text);

} // namespace tessary
