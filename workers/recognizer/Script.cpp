#include "workers/recognizer/Script.h"

namespace tessary::recognizer {
namespace {

std::optional<Script> scriptOf(const QString& tag)
{
    if (tag == QLatin1String("zh-Hans"))
        return Script::Simplified;
    if (tag == QLatin1String("zh-Hant"))
        return Script::Traditional;
    if (tag == QLatin1String("en-US"))
        return Script::Latin;
    if (tag == QLatin1String("ja-JP"))
        return Script::Japanese;
    return std::nullopt;
}

} // namespace

QList<Script> scriptsOf(const QStringList& languageTags)
{
    QList<Script> scripts;
    for (const QString& tag : languageTags)
        if (const std::optional<Script> script = scriptOf(tag); script && !scripts.contains(*script))
            scripts.append(*script);
    return scripts;
}

const char* modelOf(Script script)
{
    switch (script) {
    case Script::Simplified:
        return "chi_sim";
    case Script::Traditional:
        return "chi_tra";
    case Script::Japanese:
        return "jpn";
    case Script::Latin:
        break;
    }
    return "eng";
}

QString packageOf(Script script)
{
    return QStringLiteral("tesseract-ocr-") +
           QString::fromLatin1(modelOf(script)).replace(QLatin1Char('_'), QLatin1Char('-'));
}

} // namespace tessary::recognizer
