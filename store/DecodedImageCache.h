#pragma once

#include <QHash>
#include <QImage>
#include <QString>

#include <list>

namespace tessary {

/// Decoded pictures by key, within a budget of bytes and of entries; the ones used longest ago go first.
/// Not for several threads at once.
class DecodedImageCache {
public:
    struct Limits {
        qint64 totalCost; ///< Bytes; an image costs its bytes per line times its height.
        qsizetype count;  ///< Entries.
    };
    explicit DecodedImageCache(Limits limits) : m_limits(limits) {}

    /// A null image when there is none; otherwise it counts as used just now.
    [[nodiscard]] QImage find(const QString& key);
    /// Replaces what was there. An image that alone exceeds the budget is not kept.
    void insert(const QString& key, const QImage& image);
    void clear();

    [[nodiscard]] bool contains(const QString& key) const { return m_byKey.contains(key); }
    [[nodiscard]] qsizetype count() const { return m_byKey.size(); }
    [[nodiscard]] qint64 totalCost() const { return m_totalCost; }

private:
    struct Entry {
        QString key;
        QImage image;
        qint64 cost;
    };
    using Entries = std::list<Entry>; // most recently used first

    void remove(Entries::iterator entry);

    const Limits m_limits;
    Entries m_entries;
    QHash<QString, Entries::iterator> m_byKey;
    qint64 m_totalCost = 0;
};

} // namespace tessary
