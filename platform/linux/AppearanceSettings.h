#pragma once

#include "platform/DesktopAppearance.h"

#include <QMap>
#include <QVariantMap>

namespace tessary {

/// The desktop's settings as the settings portal lists them, by namespace; and what they say about the
/// appearance. A value of a wrong type counts as absent: they come from another process.
class AppearanceSettings {
public:
    using Namespaces = QMap<QString, QVariantMap>;

    /// The namespaces that matter.
    [[nodiscard]] static QStringList namespaces();

    void replace(const Namespaces& values) { m_values = values; }
    void set(const QString& group, const QString& key, const QVariant& value)
    {
        m_values[group][key] = value;
    }

    /// Unknown where the desktop has no preference.
    [[nodiscard]] DesktopAppearance::ColourScheme colourScheme() const;
    [[nodiscard]] std::optional<QColor> accentColour() const;
    [[nodiscard]] bool reducedMotion() const;
    /// From 0.5 to 3; 1 where nothing is said.
    [[nodiscard]] double textScale() const;

private:
    [[nodiscard]] QVariant value(const char* group, const char* key) const;

    Namespaces m_values;
};

} // namespace tessary
