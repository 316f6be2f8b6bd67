#include "app/menubar/MenuBarExtra.h"

#include "app/AppSettings.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcMenuBar, "tessary.menubar")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 1s; // between a panel's tray for windows and its host on the bus

} // namespace

MenuBarExtra::MenuBarExtra(AppSettings& settings, DesktopAppearance& appearance, StatusHosts& hosts,
                           QMenu& menu)
    : m_settings(settings),
      m_appearance(appearance),
      m_hosts(hosts),
      m_menu(menu)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    connect(&m_patience, &QTimer::timeout, this, &MenuBarExtra::insert);
    connect(&m_settings, &AppSettings::showMenuBarIconChanged, this, &MenuBarExtra::update);
    connect(&m_hosts, &StatusHosts::changed, this, &MenuBarExtra::update);
    connect(&m_appearance, &DesktopAppearance::changed, this, &MenuBarExtra::paint);
    update();
}

void MenuBarExtra::update()
{
    if (!m_settings.showMenuBarIcon()) {
        m_patience.stop();
        m_icon.reset();
        return;
    }
    if (m_icon)
        return; // Qt moves it to a panel that is started again
    switch (m_hosts.kind()) {
    case StatusHosts::Kind::StatusNotifier:
        return insert();
    case StatusHosts::Kind::Embedding:
        return m_patience.start();
    case StatusHosts::Kind::None:
        m_patience.stop();
        if (!std::exchange(m_hasToldOfNone, true))
            qCInfo(lcMenuBar, "no panel shows icons of programs; the icon will wait for one");
        return;
    case StatusHosts::Kind::Unknown:
        return;
    }
}

void MenuBarExtra::insert()
{
    m_patience.stop();
    m_icon = std::make_unique<QSystemTrayIcon>();
    m_icon->setToolTip(QStringLiteral("Tessary"));
    m_icon->setContextMenu(&m_menu);
    paint();
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    Q_EMIT activated();
            });
    m_icon->show();
    qCInfo(lcMenuBar, "the icon is in the panel");
}

void MenuBarExtra::paint()
{
    if (m_icon)
        m_icon->setIcon(m_image.image(m_appearance.colourScheme()));
}

} // namespace tessary
