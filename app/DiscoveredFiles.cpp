#include "app/DiscoveredFiles.h"

namespace tessary {

DiscoveredFiles DiscoveredFiles::renewed() const
{
    DiscoveredFiles files(m_mostAtOnce);
    files.m_taken = m_taken;
    return files;
}

void DiscoveredFiles::add(const Entry& entry)
{
    if (const auto running = m_running.find(entry.path); running != m_running.end()) {
        *running = true;
        return;
    }
    if (m_waitingPaths.contains(entry.path))
        return;
    m_waitingPaths.insert(entry.path);
    m_waiting.push_back(entry);
}

std::optional<DiscoveredFiles::Entry> DiscoveredFiles::begin()
{
    if (m_waiting.empty() || m_running.size() >= m_mostAtOnce)
        return std::nullopt;
    Entry entry = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_waitingPaths.remove(entry.path);
    m_running.insert(entry.path, false);
    return entry;
}

void DiscoveredFiles::finish(const QByteArray& path, const std::optional<FileStamp>& stamp)
{
    if (stamp)
        m_taken->insert(path, *stamp);
    if (m_running.take(path))
        add({path, CountDuplicate::Yes});
}

bool DiscoveredFiles::isTaken(const QByteArray& path, const FileStamp& stamp) const
{
    const auto taken = m_taken->constFind(path);
    return taken != m_taken->constEnd() && *taken == stamp;
}

} // namespace tessary
