#include "platform/x11/DeadlineQueue.h"

#include <algorithm>

namespace tessary {

DeadlineQueue::Id DeadlineQueue::add(TimePoint when, std::function<void()> call)
{
    const Id id = ++m_lastId;
    m_calls.emplace(std::pair(when, id), std::move(call));
    return id;
}

void DeadlineQueue::remove(Id id)
{
    const auto found = std::find_if(m_calls.begin(), m_calls.end(),
                                    [id](const auto& entry) { return entry.first.second == id; });
    if (found != m_calls.end())
        m_calls.erase(found);
}

std::optional<DeadlineQueue::TimePoint> DeadlineQueue::next() const
{
    if (m_calls.empty())
        return std::nullopt;
    return m_calls.begin()->first.first;
}

void DeadlineQueue::runDue(TimePoint now)
{
    const Id newestBefore = m_lastId;
    auto entry = m_calls.begin();
    while (entry != m_calls.end() && entry->first.first <= now) {
        if (entry->first.second > newestBefore) {
            ++entry;
            continue;
        }
        // A call may add and remove others, so start over from the front afterwards.
        const std::function<void()> call = std::move(entry->second);
        m_calls.erase(entry);
        call();
        entry = m_calls.begin();
    }
}

} // namespace tessary
