#pragma once

#include "bench/recognition/CharacterErrorRate.h"

#include <QMap>
#include <QStringList>

namespace tessary::bench {

/// What a run of the benchmark found, and its table.
class RecognitionTable {
public:
    struct Sample {
        QString half;
        QString group;
        QString level; ///< "accurate" or "fast".
        CharacterErrors alike;
        CharacterErrors toldApart;
        double milliseconds = 0;
    };
    void add(const Sample& sample) { m_samples.append(sample); }

    /// A row for each level, half and group: pictures, error rates over all their characters, median time.
    [[nodiscard]] QString text() const;

private:
    QList<Sample> m_samples;
};

} // namespace tessary::bench
