#pragma once

#include "store/ScreenshotRecord.h"

namespace tessary {

/// The name that a file with the item is offered under: its title with an extension, without characters that
/// file systems do not take, 200 bytes at most, never hidden, never empty.
[[nodiscard]] QString exportName(const ScreenshotRecord& record);

} // namespace tessary
