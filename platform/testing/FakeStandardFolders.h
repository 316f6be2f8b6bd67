#pragma once

#include "base/FileError.h"
#include "platform/StandardFolders.h"

#include <optional>

namespace tessary::testing {

/// Folders that a test names; they need not exist.
class FakeStandardFolders : public StandardFolders {
public:
    explicit FakeStandardFolders(QString applicationSupport = QStringLiteral("/nowhere/share"),
                                 QString desktop = QStringLiteral("/nowhere/Desktop"))
        : m_applicationSupport(std::move(applicationSupport)),
          m_desktop(std::move(desktop))
    {
    }

    [[nodiscard]] QString applicationSupport() const override
    {
        if (m_failure)
            throw FileError(*m_failure, m_applicationSupport);
        return m_applicationSupport;
    }
    [[nodiscard]] QString desktop() const override { return m_desktop; }

    void setApplicationSupport(const QString& folder) { m_applicationSupport = folder; }
    void setDesktop(const QString& folder) { m_desktop = folder; }
    /// The person has no usable home; nothing repairs it.
    void failWith(std::optional<FileError::Case> failure) { m_failure = failure; }

private:
    QString m_applicationSupport;
    QString m_desktop;
    std::optional<FileError::Case> m_failure;
};

} // namespace tessary::testing
