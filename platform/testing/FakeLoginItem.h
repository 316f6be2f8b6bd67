#pragma once

#include "base/FileError.h"
#include "platform/LoginItem.h"
#include "platform/testing/NextTurn.h"

#include <optional>

namespace tessary::testing {

/// A login item that only counts. Answers come after a turn of the event loop.
class FakeLoginItem : public LoginItem {
public:
    [[nodiscard]] QCoro::Task<bool> isEnabled() override
    {
        co_await NextTurn();
        co_return m_isEnabled;
    }
    [[nodiscard]] QCoro::Task<> enable() override { return change(true); }
    [[nodiscard]] QCoro::Task<> disable() override { return change(false); }

    void setEnabled(bool isEnabled) { m_isEnabled = isEnabled; }
    [[nodiscard]] bool wasEnabled() const { return m_isEnabled; }
    void failWith(std::optional<FileError::Case> failure) { m_failure = failure; }
    /// How often something was to be changed.
    [[nodiscard]] int changes() const { return m_changes; }

private:
    QCoro::Task<> change(bool isEnabled)
    {
        ++m_changes;
        co_await NextTurn();
        if (m_failure)
            throw FileError(*m_failure, QStringLiteral("autostart"));
        m_isEnabled = isEnabled;
    }

    bool m_isEnabled = false;
    int m_changes = 0;
    std::optional<FileError::Case> m_failure;
};

} // namespace tessary::testing
