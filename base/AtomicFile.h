#pragma once

#include "base/FileError.h"

#include <QByteArray>

namespace tessary {

/// Whether a written file must survive a power cut (synced to the disk) or only our own death.
enum class Durability { Process, PowerCut };

/// Replaces the file with the bytes, or leaves what was there: written to a hidden temporary beside it,
/// mode 0600, then renamed. Blocks on the disk: not for the main thread.
/// @throws FileError; the temporary is gone then.
void writeFileAtomically(const QString& path, const QByteArray& bytes, Durability durability);

/// Copies the source byte for byte, under the same guarantees. Shares blocks where the file system can.
/// @throws FileError for either file; no destination is left then.
void copyFileAtomically(const QString& source, const QString& destination, Durability durability);

/// Sees to it that there is no such file (or link). Blocks on the disk. @throws FileError.
void removeFile(const QString& path);

} // namespace tessary
