#pragma once

#include "base/Error.h"

namespace tessary::recognizer {

/// Why a request has no result. Stays inside the worker; the client makes its own error of the reply.
class RecognizerFailure : public Error {
public:
    enum class Case { ModelsMissing, TooLarge, BadRequest };
    /// @param detail of ModelsMissing the packages, else a short technical reason without content.
    explicit RecognizerFailure(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail))
    {
    }

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override { return m_detail; }

private:
    Case m_case;
    QString m_detail;
};

} // namespace tessary::recognizer
