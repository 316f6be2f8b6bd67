#include "app/ApplicationIdentity.h"
#include "app/SingleInstance.h"
#include "app/TessaryApp/TessaryApp.h"
#include "app/commandline/VerbRunner.h"
#include "app/language/Translations.h"
#include "base/FreedMemory.h"
#include "platform/linux/DetachedProgram.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

Q_LOGGING_CATEGORY(lcMain, "tessary.main")

namespace {

using tessary::CommandLine;
using tessary::ExitStatus;

constexpr mode_t kOthersMask = 0077;

int complain(ExitStatus status, const QString& sentence)
{
    std::fprintf(stderr, "tessary: %s\n", qUtf8Printable(sentence));
    return static_cast<int>(status);
}

/// @returns the exit status when there is nothing more to do.
std::optional<int> answerWithoutDisplay(const CommandLine& commandLine)
{
    switch (commandLine.request) {
    case CommandLine::Request::ShowVersion:
        std::fputs(qUtf8Printable(CommandLine::versionText()), stdout);
        return 0;
    case CommandLine::Request::ShowHelp:
        std::fputs(qUtf8Printable(commandLine.verb != nullptr ? helpText(*commandLine.verb)
                                                              : CommandLine::helpText()),
                   stdout);
        return 0;
    case CommandLine::Request::Misuse:
        std::fprintf(stderr, "%s\n", qUtf8Printable(commandLine.complaint));
        return static_cast<int>(ExitStatus::WrongUse);
    case CommandLine::Request::Run:
    case CommandLine::Request::RunUnnoticed:
    case CommandLine::Request::Perform:
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

/// @throws CommandError, FileError.
tessary::BusClient::HasEnded startInBackground()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        throw tessary::CommandError(
            ExitStatus::Failed,
            QStringLiteral("Tessary does not run, and there is no X display to start it on: "
                           "DISPLAY is not set"));
    const auto program = std::make_shared<tessary::DetachedProgram>(QCoreApplication::applicationFilePath(),
                                                                    QByteArrayList{"--background"});
    return [program] { return program->hasEnded(); };
}

int perform(const CommandLine& commandLine, int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const tessary::Translations translations(
        tessary::interfaceLanguage(tessary::LocaleVariables::ofEnvironment()));
    try {
        tessary::BusClient client(&startInBackground);
        const auto status = static_cast<int>(tessary::VerbRunner(client).perform(commandLine));
        if (std::fflush(stdout) == 0)
            return status;
        return complain(ExitStatus::Failed, QStringLiteral("the result cannot be written"));
    } catch (const tessary::CommandError& error) {
        return complain(error.status(), error.localizedDescription());
    } catch (const tessary::Error& error) {
        return complain(ExitStatus::Failed, error.localizedDescription());
    }
}

int run(tessary::SingleInstance::IfAnother ifAnother, int argc, char** argv)
{
    QApplication application(argc, argv);
    const tessary::Translations translations(
        tessary::interfaceLanguage(tessary::LocaleVariables::ofEnvironment()));
    QApplication::setApplicationName(QStringLiteral("Tessary"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARY_VERSION));
    QGuiApplication::setDesktopFileName(tessary::applicationIdentifier());
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        tessary::LibraryBusObject bus;
        if (tessary::SingleInstance::claim(bus, ifAnother) == tessary::SingleInstance::Outcome::HandedOver) {
            qCInfo(lcMain, "Tessary runs already");
            return 0;
        }
        tessary::TessaryApp app(bus);
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
    const CommandLine commandLine = CommandLine::parse(QByteArrayList(argv + 1, argv + argc));
    if (const std::optional<int> status = answerWithoutDisplay(commandLine))
        return *status;
    if (commandLine.request == CommandLine::Request::Perform) {
        const int status = perform(commandLine, argc, argv);
        std::fflush(nullptr);
        // Else the bus's own thread, still at work, complains of what is destroyed around it.
        std::_Exit(status);
    }
    tessary::keepLittleFreedMemory();
    ::umask(kOthersMask); // what we keep is nobody else's business
    qSetMessagePattern(QStringLiteral("%{time yyyy-MM-dd hh:mm:ss.zzz} %{category} %{type}: %{message}"));
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return complain(ExitStatus::Failed, QStringLiteral("no X display: DISPLAY is not set"));
    chooseDisplay();
    using IfAnother = tessary::SingleInstance::IfAnother;
    const bool isUnnoticed = commandLine.request == CommandLine::Request::RunUnnoticed;
    return run(isUnnoticed ? IfAnother::IsLeftAlone : IfAnother::ShowsItsPanel, argc, argv);
}
