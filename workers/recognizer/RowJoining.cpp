#include "workers/recognizer/RowJoining.h"

#include "workers/recognizer/TextLine.h"

namespace tessary::recognizer {
namespace {

bool areOneRow(const QRect& one, const QRect& other)
{
    constexpr double kWideBlank = 1.5;
    constexpr double kAlike = 1.6;
    const int small = std::min(one.height(), other.height());
    const int large = std::max(one.height(), other.height());
    return other.left() > one.left() && 3 * commonHeight(one, other) >= 2 * small &&
           large <= small * kAlike && gapBetween(one, other) <= large * kWideBlank;
}

} // namespace

QList<ReadLine> joinRows(const QList<ReadLine>& lines)
{
    QList<ReadLine> result;
    for (const ReadLine& line : lines) {
        if (result.isEmpty() || !areOneRow(result.last().box, line.box)) {
            result.append(line);
            continue;
        }
        ReadLine& row = result.last();
        const auto length = double(row.text.size());
        const auto added = double(line.text.size());
        row.confidence = (row.confidence * length + line.confidence * added) / (length + added);
        row.text += QLatin1Char(' ') + line.text;
        row.box |= line.box;
    }
    return result;
}

} // namespace tessary::recognizer
