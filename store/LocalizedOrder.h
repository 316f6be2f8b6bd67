#pragma once

#include <QStringList>

namespace tessary {

/// The texts in the order of the person's language, upper and lower case alike; texts that are alike come in
/// the order of their code units. Any thread.
[[nodiscard]] QStringList localizedOrder(QStringList texts);

} // namespace tessary
