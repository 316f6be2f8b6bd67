#pragma once

#include "base/Error.h"

namespace tessary {

/// Why a library could not be exported or restored, apart from what files themselves refuse.
class ArchiveError : public Error {
public:
    enum class Case {
        FolderNotEmpty, ///< Something is in the folder that is to be exported into.
        NotAnExport,    ///< The folder to restore from has no list of items.
        Interrupted,    ///< The program is ending, or all data were cleared meanwhile.
    };

    ArchiveError(Case which, QString folder) : m_case(which), m_folder(std::move(folder)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_folder;
};

} // namespace tessary
