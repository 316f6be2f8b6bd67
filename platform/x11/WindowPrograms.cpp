#include "platform/x11/WindowPrograms.h"

#include "platform/x11/WindowFocus.h"
#include "platform/x11/WindowProperties.h"
#include "platform/x11/XcbReply.h"

#include <QFile>

#include <array>
#include <unistd.h>

namespace tessary {
namespace {

const QByteArray kApplicationId("_GTK_APPLICATION_ID");

/// The program's file; empty when the process is gone or not ours to see.
QString executableOf(qint64 process)
{
    std::array<char, 4096> target{};
    const QByteArray link = "/proc/" + QByteArray::number(process) + "/exe";
    const ssize_t length = ::readlink(link.constData(), target.data(), target.size());
    return length > 0 ? QFile::decodeName(QByteArray(target.data(), length)) : QString();
}

/// Terminals that may run without a desktop file.
bool isTerminalClass(const QString& windowClass)
{
    static const QStringList classes{
        QStringLiteral("xterm"), QStringLiteral("uxterm"),      QStringLiteral("rxvt"),
        QStringLiteral("urxvt"), QStringLiteral("st-256color"), QStringLiteral("alacritty"),
        QStringLiteral("kitty"), QStringLiteral("eterm"),       QStringLiteral("mlterm"),
    };
    return classes.contains(windowClass, Qt::CaseInsensitive);
}

} // namespace

WindowPrograms::WindowPrograms(X11EventLoop& loop, DesktopEntries entries, QString ownIdentifier)
    : m_loop(loop),
      m_entries(std::move(entries)),
      m_ownIdentifier(std::move(ownIdentifier))
{
}

void WindowPrograms::prefetchAtoms()
{
    m_loop.atoms().prefetch({kApplicationId, "_NET_WM_PID", "WM_CLIENT_MACHINE"});
}

std::optional<RunningApplication> WindowPrograms::programOf(xcb_window_t window)
{
    xcb_connection_t* x = m_loop.connection();
    const XcbReply<xcb_get_window_attributes_reply_t> exists(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    if (!exists)
        return std::nullopt;
    RunningApplication program;
    program.window = window;
    program.processIdentifier = processOf(m_loop, window);
    const WindowIdentity identity = identityOf(window, program.processIdentifier);
    program.isTerminal = isTerminalClass(identity.windowClass) || isTerminalClass(identity.instance);
    if (const std::optional<DesktopEntry> entry = m_entries.find(identity)) {
        program.localizedName = entry->name;
        program.bundleIdentifier = entry->id;
        program.bundleURL = QUrl::fromLocalFile(entry->path);
        program.isTerminal =
            program.isTerminal || entry->categories.contains(QLatin1String("TerminalEmulator"));
        return program;
    }
    const QString& name = identity.windowClass.isEmpty() ? identity.instance : identity.windowClass;
    if (!name.isEmpty()) {
        program.localizedName = name;
        program.bundleIdentifier = name;
    }
    if (program.processIdentifier == ::getpid()) // run from where it was built
        program.bundleIdentifier = m_ownIdentifier;
    return program;
}

WindowIdentity WindowPrograms::identityOf(xcb_window_t window, qint64 process)
{
    const auto text = [&](xcb_atom_t property) {
        return textProperty(m_loop.connection(), window, property).value_or(QByteArray());
    };
    const QList<QByteArray> classes = text(XCB_ATOM_WM_CLASS).split('\0');
    WindowIdentity identity;
    identity.applicationId = QString::fromUtf8(text(m_loop.atoms().atom(kApplicationId)));
    identity.instance = QString::fromUtf8(classes.value(0));
    identity.windowClass = QString::fromUtf8(classes.value(1));
    if (process > 0)
        identity.executable = executableOf(process);
    if (process == ::getpid())
        identity.applicationId = m_ownIdentifier;
    return identity;
}

} // namespace tessary
