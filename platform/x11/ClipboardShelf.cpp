#include "platform/x11/ClipboardShelf.h"

namespace tessary {

qint64 ClipboardShelf::look()
{
    const qint64 count = m_count.load(std::memory_order_acquire);
    if (count != m_seen) {
        const std::scoped_lock lock(m_mutex);
        m_seen = count;
    }
    return count;
}

ClipboardShelf::Arrival ClipboardShelf::arrival(qint64 count)
{
    return {*this, count};
}

bool ClipboardShelf::Arrival::await_suspend(std::coroutine_handle<> coroutine) const
{
    auto home = std::make_unique<ThreadResumption>();
    const std::scoped_lock lock(m_shelf->m_mutex);
    const auto found = m_shelf->m_changes.find(m_count);
    if (found == m_shelf->m_changes.end() || found->second.hasArrived)
        return false;
    found->second.waiters.push_back({std::move(home), coroutine});
    return true;
}

std::optional<QByteArray> ClipboardShelf::contents(qint64 count, PasteboardType type)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_changes.find(count);
    if (found == m_changes.end())
        return std::nullopt;
    return found->second.snapshot.of(type);
}

void ClipboardShelf::release(qint64 count)
{
    const std::scoped_lock lock(m_mutex);
    for (auto change = m_changes.begin(); change != m_changes.end() && change->first <= count;)
        change = change->second.waiters.empty() ? m_changes.erase(change) : std::next(change);
}

qint64 ClipboardShelf::announce()
{
    const std::scoped_lock lock(m_mutex);
    for (auto change = m_changes.begin(); change != m_changes.end();) {
        const bool isUnseen = change->first != m_seen && change->second.waiters.empty();
        change = isUnseen ? m_changes.erase(change) : std::next(change);
    }
    const qint64 count = m_count.load(std::memory_order_relaxed) + 1;
    if (!m_isClosed)
        m_changes[count];
    m_count.store(count, std::memory_order_release);
    return count;
}

bool ClipboardShelf::isWanted(qint64 count)
{
    const std::scoped_lock lock(m_mutex);
    return m_changes.contains(count);
}

void ClipboardShelf::put(qint64 count, ClipboardSnapshot snapshot)
{
    std::vector<Waiter> waiters;
    {
        const std::scoped_lock lock(m_mutex);
        const auto found = m_changes.find(count);
        if (found == m_changes.end())
            return;
        found->second.snapshot = std::move(snapshot);
        found->second.hasArrived = true;
        waiters = std::exchange(found->second.waiters, {});
    }
    for (const Waiter& waiter : waiters)
        waiter.home->resume(waiter.coroutine);
}

void ClipboardShelf::close()
{
    std::vector<qint64> counts;
    {
        const std::scoped_lock lock(m_mutex);
        m_isClosed = true;
        for (const auto& [count, change] : m_changes) {
            if (!change.hasArrived)
                counts.push_back(count);
        }
    }
    for (const qint64 count : counts)
        put(count, {});
}

} // namespace tessary
