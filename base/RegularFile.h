#pragma once

#include "base/FileDescriptor.h"

#include <QString>

namespace tessary {

/// Opens a regular file for reading, through links too. Never waits for the other end of a pipe.
/// @throws FileError; ReadUnknown when it is no regular file.
[[nodiscard]] FileDescriptor openRegularFile(const QString& path);

} // namespace tessary
