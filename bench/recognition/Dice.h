#pragma once

#include <QList>

#include <random>

namespace tessary::bench {

/// Chance that is the same in every run. Own arithmetic on the engine's numbers, since the standard's
/// distributions differ between libraries.
class Dice {
public:
    explicit Dice(quint64 seed) : m_engine(seed) {}

    /// 0 to `sides` - 1.
    [[nodiscard]] int below(qsizetype sides)
    {
        return static_cast<int>(m_engine() % static_cast<quint64>(sides));
    }
    /// Both ends included.
    [[nodiscard]] int between(int least, int most) { return least + below(most - least + 1); }
    [[nodiscard]] bool oneIn(int sides) { return below(sides) == 0; }
    template <typename T>
    [[nodiscard]] const T& pick(const QList<T>& from)
    {
        return from.at(below(from.size()));
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace tessary::bench
