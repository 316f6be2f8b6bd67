#pragma once

#include "base/Error.h"

#include <qcoro/qcorotask.h>

namespace tessary {

class FileManagerError : public Error {
public:
    enum class Case {
        NoSuchFile,   ///< Neither the file nor its folder is there.
        NoFileManager ///< Nothing on this desktop shows folders.
    };

    FileManagerError(Case which, QString path) : m_case(which), m_path(std::move(path)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& path() const noexcept { return m_path; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_path;
};

/// The program that shows folders. Main thread only; never blocks.
class FileManager {
public:
    virtual ~FileManager() = default;
    /// Shows the file's folder with the file selected, as far as the desktop can; of a file that is gone,
    /// the folder. Ends when the file manager has taken the request. @throws FileManagerError.
    [[nodiscard]] virtual QCoro::Task<> reveal(QString path) = 0;
};

} // namespace tessary
