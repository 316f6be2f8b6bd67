#pragma once

#include "base/SerialLane.h"
#include "platform/DesktopAppearance.h"
#include "platform/linux/AppearanceSettings.h"

#include <QDBusVariant>

class QDBusServiceWatcher;

namespace tessary {

/// Asks the settings portal and hears of changes. Where the portal has no preference, or there is none, a
/// dark window colour of Qt's palette still tells of a dark desktop; a light one tells nothing, since that
/// is what Qt uses when nobody told it anything.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT
public:
    /// @param busAddress of the bus with the portal; empty means the session bus.
    explicit PortalAppearance(QString busAddress = {}, QObject* parent = nullptr);
    ~PortalAppearance() override;

    [[nodiscard]] ColourScheme colourScheme() const override { return m_appearance.colourScheme; }
    [[nodiscard]] std::optional<QColor> accentColour() const override { return m_appearance.accentColour; }
    [[nodiscard]] bool reducedMotion() const override { return m_appearance.reducedMotion; }
    [[nodiscard]] double textScale() const override { return m_appearance.textScale; }

Q_SIGNALS:
    /// The portal has answered, or there is none. For whoever wants to wait for the first answer.
    void asked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    struct Appearance {
        ColourScheme colourScheme = ColourScheme::Unknown;
        std::optional<QColor> accentColour;
        bool reducedMotion = false;
        double textScale = 1;

        friend bool operator==(const Appearance&, const Appearance&) = default;
    };

    void connectToBus();
    void watchPortal();
    void readSettings();
    void update();

    QString m_busAddress;
    QString m_connectionName;
    AppearanceSettings m_settings;
    Appearance m_appearance;
    QDBusServiceWatcher* m_watcher = nullptr;
    SerialLane m_lane;
};

} // namespace tessary
