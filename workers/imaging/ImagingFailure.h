#pragma once

#include "base/Error.h"

namespace tessary::imaging {

/// Why a request has no result. Stays inside the worker; the client makes its own error of the reply.
class ImagingFailure : public Error {
public:
    enum class Case { NotAnImage, TooLarge, BadRequest };
    /// @param detail a short technical reason without any of the picture's content.
    explicit ImagingFailure(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override { return m_detail; }

private:
    Case m_case;
    QString m_detail;
};

} // namespace tessary::imaging
