#include "platform/x11/X11Workspace.h"

#include "platform/x11/WindowFocus.h"
#include "platform/x11/WindowProperties.h"
#include "platform/x11/X11AsyncCall.h"
#include "platform/x11/X11Call.h"
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

/// On the way from one window to another, window managers name none for a moment.
constexpr std::chrono::milliseconds kBetweenWindows{150};

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

X11Workspace::X11Workspace(DesktopEntries entries, QString ownIdentifier, QObject* parent)
    : Workspace(parent),
      m_entries(std::move(entries)),
      m_ownIdentifier(std::move(ownIdentifier)),
      m_loop("tessary-windows"),
      m_activation(m_loop)
{
    connect(&m_sleepMonitor, &LogindSleepMonitor::wokeUp, this, &Workspace::didWake);
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    // Without a server there is no active window.
    m_loop.setConnectionLostHandler([this] {
        m_activation.connectionLost();
        publish(std::nullopt);
    });
    m_loop.start();
    m_loop.post([this] { watchRoot(); });
}

X11Workspace::~X11Workspace()
{
    m_loop.stop();
}

QCoro::Task<bool> X11Workspace::requestActivation(RunningApplication application)
{
    std::function<void(X11AsyncCall<bool>::Done)> request =
        [this, application](const X11AsyncCall<bool>::Done& done) {
            m_activation.request(application, done);
        };
    const bool isGranted = co_await X11AsyncCall<bool>(m_loop, std::move(request));
    co_return isGranted;
}

QCoro::Task<bool> X11Workspace::isActive(RunningApplication application)
{
    std::function<bool()> look = [this, application] { return m_activation.isActive(application); };
    const bool isInFront = co_await X11Call<bool>(m_loop, std::move(look));
    co_return isInFront;
}

void X11Workspace::watchRoot()
{
    m_loop.atoms().prefetch(
        {kActiveWindow, kWindowType, kDock, kApplicationId, "_NET_WM_PID", "WM_CLIENT_MACHINE"});
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_loop.connection(), m_loop.root(), XCB_CW_EVENT_MASK, &mask);
    readActiveWindow();
}

void X11Workspace::handle(const xcb_generic_event_t& event)
{
    m_activation.handleEvent(event);
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
    const xcb_window_t window = activeWindow(m_loop);
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

WindowIdentity X11Workspace::identityOf(xcb_window_t window, qint64 process)
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
