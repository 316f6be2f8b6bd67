#include "bench/recognition/CharacterErrorRate.h"

#include <QList>

#include <algorithm>
#include <numeric>

namespace tessary::bench {

double CharacterErrors::rate() const
{
    return static_cast<double>(distance) / static_cast<double>(std::max<qsizetype>(length, 1));
}

CharacterErrors& CharacterErrors::operator+=(const CharacterErrors& other)
{
    distance += other.distance;
    length += other.length;
    return *this;
}

QString normalized(const QString& text, Widths widths)
{
    return text
        .normalized(widths == Widths::Alike ? QString::NormalizationForm_KC : QString::NormalizationForm_C)
        .simplified();
}

CharacterErrors characterErrors(const QString& drawn, const QString& read, Widths widths)
{
    const QList<uint> expected = normalized(drawn, widths).toUcs4();
    const QList<uint> found = normalized(read, widths).toUcs4();
    // One row of the table of distances between the beginnings of both.
    QList<qsizetype> row(found.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype line = 1; line <= expected.size(); ++line) {
        qsizetype diagonal = row.at(0);
        row[0] = line;
        for (qsizetype column = 1; column <= found.size(); ++column) {
            const qsizetype replaced = diagonal + (expected.at(line - 1) == found.at(column - 1) ? 0 : 1);
            diagonal = row.at(column);
            row[column] = std::min({replaced, row.at(column) + 1, row.at(column - 1) + 1});
        }
    }
    return {row.last(), expected.size()};
}

} // namespace tessary::bench
