#pragma once

#include <QByteArray>
#include <QDBusUnixFileDescriptor>
#include <QString>

namespace tessary {

/// A file that the running program has handed to us, open.
class HandedInFile {
public:
    /// @throws CommandError when there is none.
    explicit HandedInFile(const QDBusUnixFileDescriptor& descriptor);

    /// All of it. @throws CommandError.
    [[nodiscard]] QByteArray bytes() const;
    /// Writes all of it to an open file. @throws CommandError.
    void copyTo(int descriptor) const;
    /// Replaces the file at the path with it, or leaves what was there. @throws CommandError.
    void saveTo(const QByteArray& path) const;

private:
    QDBusUnixFileDescriptor m_descriptor;
};

} // namespace tessary
