#pragma once

#include "platform/KeystrokeSender.h"
#include "platform/testing/NextTurn.h"

#include <QList>

#include <utility>

namespace tessary::testing {

/// Remembers what was typed where. Answers come after a turn of the event loop.
class FakeKeystrokeSender : public KeystrokeSender {
public:
    using Sent = std::pair<PasteKeystroke, RunningApplication>;

    [[nodiscard]] QCoro::Task<std::optional<PasteKeystroke>>
    pasteKeystroke(RunningApplication target) override
    {
        co_await NextTurn();
        if (!m_canType)
            co_return std::nullopt;
        co_return target.isTerminal ? PasteKeystroke::ShiftInsert : PasteKeystroke::ControlV;
    }
    [[nodiscard]] QCoro::Task<bool> send(PasteKeystroke keystroke, RunningApplication target) override
    {
        co_await NextTurn();
        if (m_canType)
            m_sent.append({keystroke, target});
        co_return m_canType;
    }

    void stopTyping() { m_canType = false; }
    [[nodiscard]] const QList<Sent>& sent() const { return m_sent; }

private:
    bool m_canType = true;
    QList<Sent> m_sent;
};

} // namespace tessary::testing
