#pragma once

#include <utility>

#include <unistd.h>

namespace tessary {

/// Owns a descriptor and closes it.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor() { (void)close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;

    /// Negative when there is none.
    [[nodiscard]] int get() const { return m_descriptor; }
    /// @returns false for a failure, with errno. Some file systems report a failed write only here.
    bool close()
    {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

} // namespace tessary
