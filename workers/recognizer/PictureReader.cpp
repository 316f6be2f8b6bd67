#include "workers/recognizer/PictureReader.h"

#include "workers/recognizer/HanSpacing.h"
#include "workers/recognizer/LineFinder.h"
#include "workers/recognizer/LineNormalizer.h"
#include "workers/recognizer/ReadingOrder.h"
#include "workers/recognizer/RecognizerFailure.h"

namespace tessary::recognizer {

QList<ReadLine> PictureReader::read(const PictureView& picture, QList<Script> scripts, Effort)
{
    QStringList missing;
    for (const Script script : scripts)
        if (!m_engines.has(modelOf(script)))
            missing.append(packageOf(script));
    if (missing.contains(packageOf(scripts.first())))
        throw RecognizerFailure(RecognizerFailure::Case::ModelsMissing, missing.join(QLatin1Char(' ')));
    std::vector<TextLine> lines = findLines(picture);
    sortForReading(lines);
    QList<ReadLine> result;
    for (const TextLine& line : lines) {
        const GreyPlane plane = normalized(picture, line);
        for (const LineReading& reading : m_engines.read(modelOf(scripts.first()), plane)) {
            const QString text = textOf(reading);
            if (!text.trimmed().isEmpty())
                result.append({line.box, text, meanConfidence(reading) / 100});
        }
    }
    return result;
}

} // namespace tessary::recognizer
