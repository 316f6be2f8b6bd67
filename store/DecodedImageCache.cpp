#include "store/DecodedImageCache.h"

namespace tessary {

QImage DecodedImageCache::find(const QString& key)
{
    const auto found = m_byKey.constFind(key);
    if (found == m_byKey.constEnd())
        return {};
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return m_entries.front().image;
}

void DecodedImageCache::insert(const QString& key, const QImage& image)
{
    if (const auto found = m_byKey.constFind(key); found != m_byKey.constEnd())
        remove(*found);
    const qint64 cost = image.bytesPerLine() * image.height();
    if (image.isNull() || cost > m_limits.totalCost)
        return;
    m_entries.push_front({key, image, cost});
    m_byKey.insert(key, m_entries.begin());
    m_totalCost += cost;
    while (m_totalCost > m_limits.totalCost || m_byKey.size() > m_limits.count)
        remove(std::prev(m_entries.end()));
}

void DecodedImageCache::clear()
{
    m_byKey.clear();
    m_entries.clear();
    m_totalCost = 0;
}

void DecodedImageCache::remove(Entries::iterator entry)
{
    m_totalCost -= entry->cost;
    m_byKey.remove(entry->key);
    m_entries.erase(entry);
}

} // namespace tessary
