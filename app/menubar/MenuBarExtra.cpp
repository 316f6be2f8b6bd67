#include "app/menubar/MenuBarExtra.h"

#include "app/AppSettings.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcMenuBar, "tessary.menubar")

namespace tessary {
namespace {

using namespace std::chrono_literals;
using Kind = StatusHosts::Kind;

constexpr auto kPatience = 1s; // between a panel's tray for windows and its host on the bus

} // namespace

MenuBarExtra::MenuBarExtra(AppSettings& settings, DesktopAppearance& appearance, StatusHosts& hosts,
                           ItemMaker makeItem)
    : m_settings(settings),
      m_appearance(appearance),
      m_hosts(hosts),
      m_makeItem(std::move(makeItem))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    connect(&m_patience, &QTimer::timeout, this, [this] { insert(Kind::Embedding); });
    connect(&m_settings, &AppSettings::showMenuBarIconChanged, this, &MenuBarExtra::update);
    connect(&m_hosts, &StatusHosts::changed, this, &MenuBarExtra::update);
    connect(&m_appearance, &DesktopAppearance::changed, this, &MenuBarExtra::paint);
    update();
}

void MenuBarExtra::update()
{
    m_patience.stop();
    if (!m_settings.showMenuBarIcon())
        return remove();
    const Kind kind = m_hosts.kind();
    if (m_item && kind == m_itemKind)
        return;
    if (kind == Kind::StatusNotifier)
        return insert(kind);
    if (kind == Kind::Embedding)
        return m_patience.start();
    // No panel at present. The item, if there is one, waits for the next.
    if (kind == Kind::None && !m_item && !std::exchange(m_hasToldOfNone, true))
        qCInfo(lcMenuBar, "no panel shows icons of programs; the icon will wait for one");
}

void MenuBarExtra::insert(Kind kind)
{
    remove();
    m_itemKind = kind;
    m_item = m_makeItem(kind);
    connect(m_item.get(), &StatusItem::activated, this, &MenuBarExtra::activated);
    connect(m_item.get(), &StatusItem::menuRequested, this, &MenuBarExtra::menuRequested);
    paint();
    qCInfo(lcMenuBar, "the icon is in the panel");
}

void MenuBarExtra::remove()
{
    if (m_item)
        qCInfo(lcMenuBar, "the icon leaves the panel");
    m_item.reset();
    m_itemKind = Kind::Unknown;
}

void MenuBarExtra::paint()
{
    if (m_item)
        m_item->setIcon(m_image.image(m_appearance.colourScheme()));
}

} // namespace tessary
