#pragma once

#include "platform/FileManager.h"
#include "platform/testing/NextTurn.h"

#include <QStringList>

#include <optional>

namespace tessary::testing {

/// Remembers what it was asked to reveal. Answers come after a turn of the event loop.
class FakeFileManager : public FileManager {
public:
    [[nodiscard]] QCoro::Task<> reveal(QString path) override
    {
        m_revealed.append(path);
        const std::optional<FileManagerError::Case> failure = m_failure;
        co_await NextTurn();
        if (failure)
            throw FileManagerError(*failure, path);
    }

    void failWith(std::optional<FileManagerError::Case> failure) { m_failure = failure; }
    [[nodiscard]] const QStringList& revealed() const { return m_revealed; }

private:
    QStringList m_revealed;
    std::optional<FileManagerError::Case> m_failure;
};

} // namespace tessary::testing
