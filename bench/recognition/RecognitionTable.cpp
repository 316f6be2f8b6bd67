#include "bench/recognition/RecognitionTable.h"

#include <algorithm>

namespace tessary::bench {
namespace {

double median(QList<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

QString percent(const CharacterErrors& errors)
{
    return QString::number(100 * errors.rate(), 'f', 2).rightJustified(7) + u'%';
}

QString row(const QString& level, const QString& half, const QString& group,
            const QList<RecognitionTable::Sample>& samples)
{
    CharacterErrors alike;
    CharacterErrors toldApart;
    QList<double> times;
    for (const RecognitionTable::Sample& sample : samples) {
        if (sample.level != level || sample.half != half ||
            (group != QLatin1String("all") && sample.group != group))
            continue;
        alike += sample.alike;
        toldApart += sample.toldApart;
        times.append(sample.milliseconds);
    }
    if (times.isEmpty())
        return {};
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7\n")
        .arg(level, -9)
        .arg(half, -10)
        .arg(group, -8)
        .arg(times.size(), 8)
        .arg(percent(alike), percent(toldApart))
        .arg(median(times), 8, 'f', 0);
}

} // namespace

QString RecognitionTable::text() const
{
    QStringList levels;
    QStringList halves;
    QStringList groups;
    for (const Sample& sample : m_samples) {
        levels.append(sample.level);
        halves.append(sample.half);
        groups.append(sample.group);
    }
    levels.removeDuplicates();
    halves.removeDuplicates();
    groups.removeDuplicates();
    groups.append(QStringLiteral("all"));
    QString table = QStringLiteral("level     half       group    pictures   errors  (widths)  median ms\n");
    for (const QString& level : std::as_const(levels))
        for (const QString& half : std::as_const(halves))
            for (const QString& group : std::as_const(groups))
                table += row(level, half, group, m_samples);
    return table;
}

} // namespace tessary::bench
