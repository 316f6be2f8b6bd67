#pragma once

#include <QtGlobal>

#include <vector>

namespace tessary {

/// Row ids from 0 to a last one: a bit each.
class RowSet {
public:
    explicit RowSet(qint64 last) : m_words(static_cast<size_t>(last) / kBits + 1) {}

    /// Ids beyond the last are not taken in.
    void insert(qint64 row)
    {
        if (isWithin(row))
            m_words[static_cast<size_t>(row) / kBits] |= bit(row);
    }
    [[nodiscard]] bool contains(qint64 row) const
    {
        return isWithin(row) && (m_words[static_cast<size_t>(row) / kBits] & bit(row)) != 0;
    }
    /// Leaves what is in both, which have the same last id.
    void intersect(const RowSet& other)
    {
        for (size_t i = 0; i < m_words.size() && i < other.m_words.size(); ++i)
            m_words[i] &= other.m_words[i];
    }
    /// Takes in what is in the other, which has the same last id.
    void unite(const RowSet& other)
    {
        for (size_t i = 0; i < m_words.size() && i < other.m_words.size(); ++i)
            m_words[i] |= other.m_words[i];
    }
    [[nodiscard]] qsizetype count() const
    {
        qsizetype count = 0;
        for (const quint64 word : m_words)
            count += qPopulationCount(word);
        return count;
    }
    template <typename Use>
    void forEach(const Use& use) const
    {
        for (size_t i = 0; i < m_words.size(); ++i) {
            for (quint64 rest = m_words[i]; rest != 0; rest &= rest - 1)
                use(static_cast<qint64>(i * kBits + qCountTrailingZeroBits(rest)));
        }
    }

private:
    static constexpr size_t kBits = 64;

    [[nodiscard]] bool isWithin(qint64 row) const
    {
        return row >= 0 && static_cast<size_t>(row) / kBits < m_words.size();
    }
    static quint64 bit(qint64 row) { return quint64{1} << (static_cast<quint64>(row) % kBits); }

    std::vector<quint64> m_words;
};

} // namespace tessary
