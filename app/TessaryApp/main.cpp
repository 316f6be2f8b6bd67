#include "app/ApplicationIdentity.h"
#include "app/CommandLine.h"
#include "app/TessaryApp/TessaryApp.h"
#include "base/FreedMemory.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <sys/stat.h>

Q_LOGGING_CATEGORY(lcMain, "tessary.main")

namespace {

using tessary::CommandLine;

constexpr int kWrongUse = 2;
constexpr mode_t kOthersMask = 0077;

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

/// @returns the exit status when there is nothing more to do.
std::optional<int> answerWithoutDisplay(const CommandLine& commandLine)
{
    switch (commandLine.request) {
    case CommandLine::Request::ShowVersion:
        std::fputs(qUtf8Printable(CommandLine::versionText()), stdout);
        return 0;
    case CommandLine::Request::ShowHelp:
        std::fputs(qUtf8Printable(CommandLine::helpText()), stdout);
        return 0;
    case CommandLine::Request::Misuse:
        std::fprintf(stderr, "%s\n", qUtf8Printable(commandLine.complaint));
        return kWrongUse;
    case CommandLine::Request::Run:
        break;
    }
    return std::nullopt;
}

/// Everything here speaks X11; in a Wayland session that is XWayland, which has its limits.
void chooseDisplay()
{
    const bool isWayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    if (isWayland)
        qCWarning(lcMain,
                  "Wayland session: running through XWayland. Copies between Wayland programs are seen "
                  "only as far as the compositor passes them on, global shortcuts work only while an "
                  "XWayland window has the focus, and Wayland windows cannot be told apart.");
}

int run(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tessary"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARY_VERSION));
    QGuiApplication::setDesktopFileName(tessary::applicationIdentifier());
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        tessary::SingleInstance instance;
        if (instance.claim() == tessary::SingleInstance::Outcome::HandedOver) {
            qCInfo(lcMain, "Tessary runs already and was asked to show its panel");
            return 0;
        }
        tessary::TessaryApp app(instance);
        app.start();
        return QApplication::exec();
    } catch (const tessary::Error& error) {
        std::fprintf(stderr, "tessary: %s\n", error.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (const std::optional<int> status = answerWithoutDisplay(CommandLine::parse(argumentsOf(argc, argv))))
        return *status;
    tessary::keepLittleFreedMemory();
    ::umask(kOthersMask); // what we keep is nobody else's business
    qSetMessagePattern(QStringLiteral("%{time yyyy-MM-dd hh:mm:ss.zzz} %{category} %{type}: %{message}"));
    if (!qEnvironmentVariableIsSet("DISPLAY")) {
        std::fputs("tessary: no X display: DISPLAY is not set\n", stderr);
        return 1;
    }
    chooseDisplay();
    return run(argc, argv);
}
