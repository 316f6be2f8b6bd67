#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace tessary::recognizer {

/// Numbers from 0, each in a set of its own until sets are joined.
class DisjointSets {
public:
    explicit DisjointSets(size_t count = 0) { grow(count); }

    void grow(size_t count)
    {
        while (m_parents.size() < count)
            m_parents.push_back(m_parents.size());
    }
    /// The set's least number.
    [[nodiscard]] size_t find(size_t member)
    {
        while (m_parents[member] != member) {
            m_parents[member] = m_parents[m_parents[member]];
            member = m_parents[member];
        }
        return member;
    }
    void join(size_t one, size_t other)
    {
        one = find(one);
        other = find(other);
        if (other < one)
            std::swap(one, other);
        m_parents[other] = one;
    }

private:
    std::vector<size_t> m_parents;
};

} // namespace tessary::recognizer
