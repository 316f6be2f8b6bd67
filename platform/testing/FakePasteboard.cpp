#include "platform/testing/FakePasteboard.h"

#include "platform/testing/NextTurn.h"

#include <QFile>

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

QCoro::Task<bool> FakePasteboard::writeText(QString text, PasteboardReach reach)
{
    const Contents contents{{PasteboardType::Text, text.toUtf8()}};
    co_return co_await write(contents, reach);
}

QCoro::Task<bool> FakePasteboard::writeImage(QString path, PasteboardReach reach)
{
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    co_await NextTurn();
    if (bytes.isEmpty())
        co_return false;
    const bool isPng = path.endsWith(QLatin1String(".png"));
    const Contents contents{{isPng ? PasteboardType::Png : PasteboardType::Bitmap, bytes}};
    co_return co_await write(contents, reach);
}

QCoro::Task<bool> FakePasteboard::write(Contents contents, PasteboardReach reach)
{
    co_await NextTurn();
    if (m_refusesWrites)
        co_return false;
    if (reach == PasteboardReach::ClipboardAndSelection)
        m_selection = contents;
    setContents(contents);
    co_return true;
}

QCoro::Task<> FakePasteboard::handOver()
{
    co_await NextTurn();
    ++m_handOvers;
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
