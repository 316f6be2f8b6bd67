#include "app/language/InterfaceLanguage.h"

#include <QRegularExpression>
#include <QStringList>

namespace tessary {
namespace {

/// Of "en_GB.UTF-8@euro" the "en".
QString languageOf(const QString& locale)
{
    static const QRegularExpression end(QStringLiteral("[_.@-]"));
    return locale.section(end, 0, 0).toLower();
}

} // namespace

LocaleVariables LocaleVariables::ofEnvironment()
{
    return {qEnvironmentVariable("LANGUAGE"), qEnvironmentVariable("LC_ALL"),
            qEnvironmentVariable("LC_MESSAGES"), qEnvironmentVariable("LANG")};
}

InterfaceLanguage interfaceLanguage(const LocaleVariables& variables)
{
    QString locale = variables.all;
    if (locale.isEmpty())
        locale = variables.messages.isEmpty() ? variables.base : variables.messages;
    const QString own = languageOf(locale);
    if (own.isEmpty() || own == QLatin1String("c") || own == QLatin1String("posix"))
        return InterfaceLanguage::Chinese;
    QStringList wanted = variables.language.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    wanted.append(locale);
    for (const QString& each : wanted) {
        const QString language = languageOf(each);
        if (language == QLatin1String("en"))
            return InterfaceLanguage::English;
        if (language == QLatin1String("zh"))
            return InterfaceLanguage::Chinese;
    }
    return InterfaceLanguage::Chinese;
}

} // namespace tessary
