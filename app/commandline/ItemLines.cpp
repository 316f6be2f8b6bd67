#include "app/commandline/ItemLines.h"

#include "base/Date.h"

#include <QJsonDocument>
#include <QStringList>
#include <QVariantMap>

namespace tessary {
namespace {

constexpr int kTextType = 1;

QString shown(const QVariant& value)
{
    if (value.metaType().id() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    if (value.canConvert<QStringList>() && value.metaType().id() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(' '));
    return value.toString();
}

} // namespace

QString ItemLines::flat(const QString& text)
{
    QString line = text;
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Other_Format ||
            character.isSpace())
            character = QLatin1Char(' ');
    }
    return line.simplified();
}

QByteArray ItemLines::line(const QJsonObject& item)
{
    const auto text = [&](const char* key) { return item.value(QLatin1String(key)).toString(); };
    const Date captured{item.value(QLatin1String("capturedAt")).toDouble()};
    const bool isText = item.value(QLatin1String("contentType")).toInt() == kTextType;
    const QString generated = text("generatedTitle");
    const QStringList fields{
        text("id"),
        captured.toDateTime().toLocalTime().toString(Qt::ISODate),
        isText ? QStringLiteral("text") : QStringLiteral("image"),
        flat(text("sourceAppName")),
        flat(generated.isEmpty() ? text("filename") : generated),
    };
    return fields.join(QLatin1Char('\t')).toUtf8() + '\n';
}

QByteArray ItemLines::facts(const QVariantMap& facts)
{
    QByteArray lines;
    for (auto fact = facts.begin(); fact != facts.end(); ++fact)
        lines += fact.key().toUtf8() + '\t' + flat(shown(fact.value())).toUtf8() + '\n';
    return lines;
}

QByteArray ItemLines::json(const QVariantMap& facts)
{
    return QJsonDocument(QJsonObject::fromVariantMap(facts)).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace tessary
