#pragma once

#include "base/Error.h"

#include <QString>

namespace tessary {

/// A failure of the projection's database, with SQLite's own message.
class StoreError : public Error {
public:
    enum class Case { OpenDatabase, Execute, Prepare };
    StoreError(Case which, QString message) : m_case(which), m_message(std::move(message)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& message() const noexcept { return m_message; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_message;
};

/// A failure of the record store's own contents.
class PersistenceError : public Error {
public:
    enum class Case { MissingEntity, InvalidRecord, NewerVersion };
    explicit PersistenceError(Case which) : m_case(which) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
};

} // namespace tessary
