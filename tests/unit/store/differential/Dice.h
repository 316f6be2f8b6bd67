#pragma once

#include <QtGlobal>

#include <random>

namespace tessary::testing {

/// Chance that is the same on every machine for the same seed.
class Dice {
public:
    explicit Dice(quint64 seed) : m_random(seed) {}

    /// 0 to `limit` - 1.
    [[nodiscard]] qsizetype below(qsizetype limit)
    {
        return static_cast<qsizetype>(m_random() % static_cast<quint64>(limit));
    }
    [[nodiscard]] qsizetype between(qsizetype first, qsizetype last)
    {
        return first + below(last - first + 1);
    }
    /// True once in so many times.
    [[nodiscard]] bool oneIn(qsizetype times) { return below(times) == 0; }
    /// Any of them; there has to be one.
    template <typename List>
    [[nodiscard]] const auto& anyOf(const List& list)
    {
        return *(std::begin(list) + below(static_cast<qsizetype>(std::size(list))));
    }

private:
    std::mt19937_64 m_random;
};

} // namespace tessary::testing
