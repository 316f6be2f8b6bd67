#pragma once

#include "base/Error.h"

namespace tessary {

/// What went wrong with a file. The log gets the path and the system's reason; the person the sentence.
class FileError : public Error {
public:
    enum class Case {
        ReadNoSuchFile,
        ReadNoPermission,
        ReadCorruptFile,
        ReadUnknown,
        WriteOutOfSpace,
        WriteNoPermission,
        WriteVolumeReadOnly,
        WriteUnknown,
    };
    enum class Operation { Read, Write };

    FileError(Case which, QString path) : m_case(which), m_path(std::move(path)) {}
    /// The case for an `errno` of a failed system call.
    [[nodiscard]] static FileError fromErrno(int code, const QString& path, Operation operation);

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& path() const noexcept { return m_path; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_path;
};

} // namespace tessary
