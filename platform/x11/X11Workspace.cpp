#include "platform/x11/X11Workspace.h"

#include "platform/x11/WindowProperties.h"
#include "platform/x11/XcbReply.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <unistd.h>

namespace tessary {
namespace {

const QByteArray kActiveWindow("_NET_ACTIVE_WINDOW");
const QByteArray kWindowType("_NET_WM_WINDOW_TYPE");
const QByteArray kDock("_NET_WM_WINDOW_TYPE_DOCK");
const QByteArray kApplicationId("_GTK_APPLICATION_ID");
const QByteArray kProcessId("_NET_WM_PID");
const QByteArray kClientMachine("WM_CLIENT_MACHINE");

/// On the way from one window to another, window managers name none for a moment.
constexpr std::chrono::milliseconds kBetweenWindows{150};

QByteArray hostName()
{
    std::array<char, 256> name{};
    ::gethostname(name.data(), name.size() - 1);
    return QByteArray(name.data());
}

/// The program's file; empty when the process is gone or not ours to see.
QString executableOf(qint64 process)
{
    std::array<char, 4096> target{};
    const QByteArray link = "/proc/" + QByteArray::number(process) + "/exe";
    const ssize_t length = ::readlink(link.constData(), target.data(), target.size());
    return length > 0 ? QFile::decodeName(QByteArray(target.data(), length)) : QString();
}

} // namespace

X11Workspace::X11Workspace(DesktopEntries entries, QObject* parent)
    : Workspace(parent),
      m_entries(std::move(entries)),
      m_loop("tessary-windows")
{
    connect(&m_sleepMonitor, &LogindSleepMonitor::wokeUp, this, &Workspace::didWake);
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    // Without a server there is no active window.
    m_loop.setConnectionLostHandler([this] { publish(std::nullopt); });
    m_loop.start();
    m_loop.post([this] { watchRoot(); });
}

void X11Workspace::watchRoot()
{
    m_loop.atoms().prefetch({kActiveWindow, kWindowType, kDock, kApplicationId, kProcessId, kClientMachine});
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_loop.connection(), m_loop.root(), XCB_CW_EVENT_MASK, &mask);
    readActiveWindow();
}

void X11Workspace::handle(const xcb_generic_event_t& event)
{
    const int kind = event.response_type & 0x7f;
    if (kind == XCB_DESTROY_NOTIFY)
        noteDestroyed(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    if (kind != XCB_PROPERTY_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == m_loop.root() && change.atom == m_loop.atoms().atom(kActiveWindow))
        readActiveWindow();
}

void X11Workspace::readActiveWindow()
{
    const xcb_window_t window = activeWindow();
    m_loop.cancel(m_noneConfirmation);
    if (window == m_active || isDock(window))
        return;
    if (window == XCB_WINDOW_NONE) {
        expectNone();
        return;
    }
    // Asked for first, so that a later end of the window is not missed.
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_loop.connection(), window, XCB_CW_EVENT_MASK, &mask);
    std::optional<RunningApplication> program = programOf(window);
    if (!program) {
        m_active = XCB_WINDOW_NONE;
        expectNone();
        return;
    }
    m_active = window;
    publish(std::move(program));
}

/// Some window managers leave a window that is gone named as the active one. The next window may well have
/// its number, so that is forgotten at once.
void X11Workspace::noteDestroyed(xcb_window_t window)
{
    if (window != m_active)
        return;
    m_active = XCB_WINDOW_NONE;
    expectNone();
}

void X11Workspace::expectNone()
{
    m_loop.cancel(m_noneConfirmation);
    const auto when = std::chrono::steady_clock::now() + kBetweenWindows;
    m_noneConfirmation = m_loop.runAt(when, [this] { noteNoneActive(); });
}

void X11Workspace::noteNoneActive()
{
    m_active = XCB_WINDOW_NONE;
    publish(std::nullopt);
}

/// Some window managers append a second word of 0.
xcb_window_t X11Workspace::activeWindow()
{
    const auto words = wordsProperty(m_loop.connection(), m_loop.root(), m_loop.atoms().atom(kActiveWindow),
                                     XCB_ATOM_WINDOW);
    return words.empty() ? xcb_window_t{XCB_WINDOW_NONE} : words.front();
}

bool X11Workspace::isDock(xcb_window_t window)
{
    const auto types =
        wordsProperty(m_loop.connection(), window, m_loop.atoms().atom(kWindowType), XCB_ATOM_ATOM);
    return std::find(types.begin(), types.end(), m_loop.atoms().atom(kDock)) != types.end();
}

std::optional<RunningApplication> X11Workspace::programOf(xcb_window_t window)
{
    xcb_connection_t* x = m_loop.connection();
    const XcbReply<xcb_get_window_attributes_reply_t> exists(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    if (!exists)
        return std::nullopt;
    const auto text = [&](xcb_atom_t property) {
        return textProperty(x, window, property).value_or(QByteArray());
    };
    const QList<QByteArray> classes = text(XCB_ATOM_WM_CLASS).split('\0');
    const auto process = wordsProperty(x, window, m_loop.atoms().atom(kProcessId), XCB_ATOM_CARDINAL);
    // A process of another machine has a number that means nothing here.
    const QByteArray machine = text(m_loop.atoms().atom(kClientMachine));
    const bool local = machine.isEmpty() || machine == hostName();

    RunningApplication program;
    program.window = window;
    program.processIdentifier = process.empty() || !local ? 0 : qint64{process.front()};
    WindowIdentity identity;
    identity.applicationId = QString::fromUtf8(text(m_loop.atoms().atom(kApplicationId)));
    identity.instance = QString::fromUtf8(classes.value(0));
    identity.windowClass = QString::fromUtf8(classes.value(1));
    if (program.processIdentifier > 0)
        identity.executable = executableOf(program.processIdentifier);

    if (const std::optional<DesktopEntry> entry = m_entries.find(identity)) {
        program.localizedName = entry->name;
        program.bundleIdentifier = entry->id;
        program.bundleURL = QUrl::fromLocalFile(entry->path);
        return program;
    }
    const QString& name = identity.windowClass.isEmpty() ? identity.instance : identity.windowClass;
    if (!name.isEmpty()) {
        program.localizedName = name;
        program.bundleIdentifier = name;
    }
    return program;
}

void X11Workspace::publish(std::optional<RunningApplication> application)
{
    const auto tell = [this, application = std::move(application)] {
        m_frontmost = application;
        if (application)
            Q_EMIT applicationActivated(*application);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

} // namespace tessary
