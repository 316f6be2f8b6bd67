#pragma once

#include "platform/PrivacySettings.h"
#include "platform/testing/NextTurn.h"

#include <QStringList>

namespace tessary::testing {

/// Remembers what it was asked to open. Answers come after a turn of the event loop.
class FakePrivacySettings : public PrivacySettings {
public:
    [[nodiscard]] QCoro::Task<bool> open(QString anchor) override
    {
        m_opened.append(anchor);
        co_await NextTurn();
        co_return true;
    }

    [[nodiscard]] const QStringList& opened() const { return m_opened; }

private:
    QStringList m_opened;
};

} // namespace tessary::testing
