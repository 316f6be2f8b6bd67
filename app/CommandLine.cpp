#include "app/CommandLine.h"

#include <QCoreApplication>

namespace tessary {

CommandLine CommandLine::parse(const QStringList& arguments)
{
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("--version") || argument == QLatin1String("-v"))
            return {Request::ShowVersion, {}};
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h"))
            return {Request::ShowHelp, {}};
    }
    if (!arguments.isEmpty())
        return {Request::Misuse, QStringLiteral("tessary: unknown argument: ") + arguments.first()};
    return {};
}

QString CommandLine::helpText()
{
    return QStringLiteral("Usage: tessary [OPTION]\n"
                          "\n"
                          "Keeps a private, local library of what you copy and of your screenshots.\n"
                          "Without an option Tessary starts, or shows the panel of the one that runs.\n"
                          "\n"
                          "  -h, --help     show this text and exit\n"
                          "  -v, --version  show the version and exit\n"
                          "\n"
                          "The library is kept in $XDG_DATA_HOME/Tessary (~/.local/share/Tessary),\n"
                          "the settings in $XDG_CONFIG_HOME/Tessary (~/.config/Tessary).\n");
}

QString CommandLine::versionText()
{
    return QStringLiteral("tessary " TESSARY_VERSION "\n");
}

} // namespace tessary
