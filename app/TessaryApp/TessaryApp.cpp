#include "app/TessaryApp/TessaryApp.h"

#include "app/menubar/EmbeddedStatusItem.h"
#include "platform/linux/StatusNotifierItem.h"

#include <QApplication>
#include <QIcon>
#include <QLoggingCategory>
#include <QTimer>

#include <chrono>

Q_LOGGING_CATEGORY(lcApp, "tessary.app")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 10s; // for imports that are under way when the program is asked to end

} // namespace

TessaryApp::TessaryApp(LibraryBusObject& bus)
    : m_bus(bus),
      m_windows(m_session.appearance(), m_session.windowEffects(), m_session.platform().clock,
                {m_session.installedApplications(), m_session.platform().applicationIcons,
                 m_session.windowPicker()}),
      m_runtime(m_session.platform(), m_windows),
      m_rewrittenSettings(m_runtime),
      m_menu(m_runtime, m_windows.theme()),
      m_menuBar(m_runtime.settings(), m_session.appearance(), m_session.statusHosts(),
                [this](StatusHosts::Kind kind) { return makeStatusItem(kind); })
{
    // For windows in taskbars and switchers of desktops that do not know our desktop file.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/tessary/symbols/app-icon.svg")));
    m_windows.attach(m_runtime);
    m_bus.attach(m_runtime);
    connect(&m_menuBar, &MenuBarExtra::activated, &m_runtime, &AppRuntime::toggleQuickSearch);
    connect(&m_menuBar, &MenuBarExtra::menuRequested, &m_menu.menu(),
            [this](const QPoint& position) { m_menu.menu().popup(position); });
    connect(&m_menu, &MenuBarContent::quitRequested, this, &TessaryApp::quit);
    connect(&m_signals, &TerminationSignals::received, this, &TessaryApp::quit);
}

TessaryApp::~TessaryApp()
{
    m_bus.detach();
    m_windows.detach();
}

std::unique_ptr<StatusItem> TessaryApp::makeStatusItem(StatusHosts::Kind kind)
{
    const QString title = QCoreApplication::applicationName();
    if (kind == StatusHosts::Kind::StatusNotifier)
        return std::make_unique<StatusNotifierItem>(title, m_menu.menu().actions());
    return std::make_unique<EmbeddedStatusItem>(title);
}

void TessaryApp::start()
{
    if (m_session.settingsProblem())
        qCWarning(lcApp, "%s", qUtf8Printable(*m_session.settingsProblem()));
    QCoro::connect(m_runtime.start(), this, [] {});
}

void TessaryApp::quit()
{
    if (std::exchange(m_isQuitting, true))
        return;
    m_bus.detach();
    m_windows.saveEdits();
    QTimer::singleShot(kPatience, qApp, [] { QCoreApplication::exit(1); });
    QCoro::connect(m_runtime.shutDown(), this, [] { QCoreApplication::quit(); });
}

} // namespace tessary
