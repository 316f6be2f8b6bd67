#include "ui/preview/TagsText.h"

namespace tessary {

bool isTagSeparator(QChar character)
{
    constexpr QChar kFullWidth(0xFF0C);
    return character == QLatin1Char(',') || character == kFullWidth;
}

QStringList splitTags(const QString& text)
{
    QStringList tags;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !isTagSeparator(text.at(end)))
            continue;
        const QString tag = text.sliced(start, end - start).simplified();
        if (!tag.isEmpty() && !tags.contains(tag))
            tags.append(tag);
        start = end + 1;
    }
    return tags;
}

QString joinedTags(const QStringList& tags)
{
    return tags.join(QStringLiteral(", "));
}

} // namespace tessary
