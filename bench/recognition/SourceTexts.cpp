#include "bench/recognition/SourceTexts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

namespace tessary::bench {
namespace {

QStringList strings(const QJsonValue& value)
{
    QStringList texts;
    const QJsonArray array = value.toArray();
    for (const auto& text : array)
        texts.append(text.toString());
    return texts;
}

} // namespace

SourceTexts SourceTexts::read(const QString& path, const QString& half)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path.toStdString());
    const QJsonObject all = QJsonDocument::fromJson(file.readAll()).object().value(half).toObject();
    SourceTexts texts;
    for (const QString& group : {QStringLiteral("passages"), QStringLiteral("labels")}) {
        const QJsonObject scripts = all.value(group).toObject();
        for (auto script = scripts.begin(); script != scripts.end(); ++script)
            texts.m_texts.insert(group + u'/' + script.key(), strings(script.value()));
    }
    texts.m_texts.insert(QStringLiteral("code"), strings(all.value(QLatin1String("code"))));
    for (const QStringList& found : std::as_const(texts.m_texts))
        if (found.size() < 5)
            throw std::runtime_error("too few texts in " + path.toStdString());
    return texts;
}

QString SourceTexts::passage(const QString& script)
{
    return next(QStringLiteral("passages/") + script);
}

QString SourceTexts::label(const QString& script)
{
    return next(QStringLiteral("labels/") + script);
}

QString SourceTexts::code()
{
    return next(QStringLiteral("code"));
}

QString SourceTexts::next(const QString& kind)
{
    const QStringList texts = m_texts.value(kind);
    return texts.at(m_used[kind]++ % texts.size());
}

} // namespace tessary::bench
