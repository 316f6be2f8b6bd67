#pragma once

#include <QString>

#include <stop_token>

namespace tessary {

/// How many bytes the regular files below the folder take on the disk, which for a file with holes is less
/// than its length. A file with several names there counts once, symbolic links are not followed (but the
/// folder itself may be one), and what cannot be read is passed over. Once a stop is requested the sum so
/// far. Blocks on the disk: not for the main thread.
[[nodiscard]] qint64 allocatedSize(const QString& folder, const std::stop_token& stop = {});

/// The same for the regular files in the folder itself whose names begin with the prefix.
[[nodiscard]] qint64 allocatedSizeOfFiles(const QString& folder, const QString& prefix);

} // namespace tessary
