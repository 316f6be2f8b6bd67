#pragma once

#include "base/Error.h"

#include <optional>

namespace tessary {

/// An answer of the bus interface that is a refusal.
class BusError : public Error {
public:
    enum class Case { NotFound, InvalidArgument, Failed };

    BusError(Case which, QString sentence) : m_case(which), m_sentence(std::move(sentence)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override { return m_sentence; }
    /// As it stands in the error's message on the bus.
    [[nodiscard]] static QString name(Case which);
    /// @returns nothing for errors that are not ours.
    [[nodiscard]] static std::optional<Case> caseOf(const QString& name);

private:
    Case m_case;
    QString m_sentence;
};

} // namespace tessary
