#include "store/TagsCoding.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tessary {

QByteArray encodeTags(const QStringList& tags)
{
    return QJsonDocument(QJsonArray::fromStringList(tags)).toJson(QJsonDocument::Compact);
}

QStringList decodeTags(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return {};
    QStringList tags;
    for (const auto& element : document.array()) {
        if (!element.isString())
            return {};
        tags.append(element.toString());
    }
    return tags;
}

} // namespace tessary
