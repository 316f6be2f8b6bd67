#pragma once

#include <QByteArrayView>
#include <QDBusUnixFileDescriptor>

namespace tessary {

/// A file without a name, in memory, to hand contents of any size to another program.
class MemoryFile {
public:
    /// @throws FileError.
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// @throws FileError when there is no memory for it.
    void append(QByteArrayView bytes);
    [[nodiscard]] qint64 size() const { return m_size; }
    /// Nobody can change it any more; who gets it reads from its start. Once, at the end. @throws FileError.
    [[nodiscard]] QDBusUnixFileDescriptor handOut();

private:
    int m_descriptor;
    qint64 m_size = 0;
};

} // namespace tessary
