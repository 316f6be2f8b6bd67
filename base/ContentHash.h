#pragma once

#include <QByteArrayView>
#include <QString>

namespace tessary {

/// SHA-256 (FIPS 180-4) as 64 lower-case hexadecimal characters.
[[nodiscard]] QString contentHash(QByteArrayView bytes);

struct FileDigest {
    QString hash;     ///< SHA-256 as above.
    qint64 byteCount; ///< How many bytes were read.
};

/// The hash of a whole file, read in pieces of constant size. Blocks on the disk.
/// @throws FileError when the file cannot be opened or read.
[[nodiscard]] FileDigest digestOfFile(const QString& path);

} // namespace tessary
