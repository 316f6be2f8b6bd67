#pragma once

#include "base/Error.h"

namespace tessary {

/// What the program ends with.
enum class ExitStatus { Done = 0, Failed = 1, WrongUse = 2, NotFound = 3 };

/// Why a verb could not be carried out.
class CommandError : public Error {
public:
    CommandError(ExitStatus status, QString sentence) : m_status(status), m_sentence(std::move(sentence)) {}

    [[nodiscard]] ExitStatus status() const noexcept { return m_status; }
    [[nodiscard]] QString localizedDescription() const override { return m_sentence; }

private:
    ExitStatus m_status;
    QString m_sentence;
};

} // namespace tessary
