#pragma once

#include "base/Error.h"

#include <QString>

namespace tessary {

class LibraryError : public Error {
public:
    enum class Case {
        InUse ///< Another program works on the library.
    };

    explicit LibraryError(Case which) : m_case(which) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
};

/// Keeps other programs from working on the library for as long as it lives, at the longest as long as the
/// process. Where the file system knows no locks, it does nothing.
class LibraryLock {
public:
    /// Blocks on the disk, but does not wait for the lock. @throws LibraryError, FileError.
    explicit LibraryLock(const QString& root);
    ~LibraryLock();
    LibraryLock(const LibraryLock&) = delete;
    LibraryLock& operator=(const LibraryLock&) = delete;

private:
    int m_file;
};

} // namespace tessary
