#pragma once

#include "base/Error.h"

namespace tessary {

/// What keeps us from the X server.
class X11Error : public Error {
public:
    enum class Case {
        NoDisplay,        ///< No server at that address, or it refused us.
        MissingExtension, ///< The server lacks an extension that we need.
    };
    explicit X11Error(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& detail() const noexcept { return m_detail; } ///< For the log.
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_detail;
};

} // namespace tessary
