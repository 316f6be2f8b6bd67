#include "platform/linux/PortalAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QUuid>

namespace tessary {
namespace {

constexpr int kPatience = 10000; // milliseconds; the portal may have to be started first
constexpr int kHalfWay = 128;

QString portalService()
{
    return QStringLiteral("org.freedesktop.portal.Desktop");
}
QString portalPath()
{
    return QStringLiteral("/org/freedesktop/portal/desktop");
}
QString settingsInterface()
{
    return QStringLiteral("org.freedesktop.portal.Settings");
}

DesktopAppearance::ColourScheme schemeOfPalette()
{
    const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < kHalfWay;
    return isDark ? DesktopAppearance::ColourScheme::Dark : DesktopAppearance::ColourScheme::Unknown;
}

} // namespace

PortalAppearance::PortalAppearance(QString busAddress, QObject* parent)
    : DesktopAppearance(parent),
      m_busAddress(std::move(busAddress)),
      m_connectionName(QStringLiteral("tessary-appearance-") + QUuid::createUuid().toString()),
      m_lane(QStringLiteral("tessary-look"))
{
    qDBusRegisterMetaType<AppearanceSettings::Namespaces>();
    qRegisterMetaType<QDBusVariant>(); // or the bus knows no slot with one until somebody else has used one
    qApp->installEventFilter(this);
    m_appearance.colourScheme = schemeOfPalette();
    // Connecting waits for the bus, and asking for the signal of a named service does once more.
    m_lane.postDetached([this] { connectToBus(); });
}

PortalAppearance::~PortalAppearance()
{
    m_lane.postDetached([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

void PortalAppearance::connectToBus()
{
    QDBusConnection bus = m_busAddress.isEmpty()
                              ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)
                              : QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    if (!bus.isConnected()) {
        QMetaObject::invokeMethod(this, &PortalAppearance::asked, Qt::QueuedConnection);
        return;
    }
    bus.connect(portalService(), portalPath(), settingsInterface(), QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QMetaObject::invokeMethod(this, &PortalAppearance::watchPortal, Qt::QueuedConnection);
}

void PortalAppearance::watchPortal()
{
    m_watcher = new QDBusServiceWatcher(portalService(), QDBusConnection(m_connectionName),
                                        QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::readSettings);
    readSettings();
}

void PortalAppearance::readSettings()
{
    QDBusMessage question = QDBusMessage::createMethodCall(portalService(), portalPath(), settingsInterface(),
                                                           QStringLiteral("ReadAll"));
    question.setArguments({AppearanceSettings::namespaces()});
    auto* answer =
        new QDBusPendingCallWatcher(QDBusConnection(m_connectionName).asyncCall(question, kPatience), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<AppearanceSettings::Namespaces> reply = *answer;
        if (reply.isValid()) {
            m_settings.replace(reply.value());
            update();
        }
        Q_EMIT asked();
    });
}

void PortalAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (!AppearanceSettings::namespaces().contains(group))
        return;
    m_settings.set(group, key, value.variant());
    update();
}

bool PortalAppearance::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        update();
    return DesktopAppearance::eventFilter(watched, event);
}

void PortalAppearance::update()
{
    Appearance appearance{m_settings.colourScheme(), m_settings.accentColour(), m_settings.reducedMotion(),
                          m_settings.textScale()};
    if (appearance.colourScheme == ColourScheme::Unknown)
        appearance.colourScheme = schemeOfPalette();
    if (appearance == m_appearance)
        return;
    m_appearance = appearance;
    Q_EMIT changed();
}

} // namespace tessary
