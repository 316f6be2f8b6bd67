#include "platform/testing/FakePasteboard.h"

#include "platform/testing/NextTurn.h"

#include <utility>

namespace tessary::testing {

/// Open unless the test holds the answers back.
class FakePasteboard::Gate {
public:
    explicit Gate(FakePasteboard& pasteboard) : m_pasteboard(pasteboard) {}

    [[nodiscard]] bool await_ready() const { return !m_pasteboard.m_held; }
    void await_suspend(std::coroutine_handle<> awaiting) { m_pasteboard.m_waiting.push_back(awaiting); }
    void await_resume() const noexcept {}

private:
    FakePasteboard& m_pasteboard;
};

QCoro::Task<std::optional<QByteArray>> FakePasteboard::data(qint64 changeCount, PasteboardType type)
{
    m_reads.append(type);
    // Taken now: contents that somebody waits for survive the next change.
    QByteArray bytes;
    if (changeCount == m_changeCount && changeCount > m_releasedUpTo)
        bytes = m_contents.value(type);
    co_await NextTurn();
    co_await Gate(*this);
    if (bytes.isEmpty())
        co_return std::nullopt;
    co_return bytes;
}

void FakePasteboard::release(qint64 changeCount)
{
    m_released.append(changeCount);
    m_releasedUpTo = std::max(m_releasedUpTo, changeCount);
}

void FakePasteboard::setContents(Contents contents)
{
    m_contents = std::move(contents);
    ++m_changeCount;
}

void FakePasteboard::letGo()
{
    m_held = false;
    for (const std::coroutine_handle<> reader : std::exchange(m_waiting, {}))
        reader.resume();
}

} // namespace tessary::testing
