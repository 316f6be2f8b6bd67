#include "platform/linux/AppearanceSettings.h"

#include <QDBusArgument>

#include <algorithm>

namespace tessary {
namespace {

using ColourScheme = DesktopAppearance::ColourScheme;

constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kInterface = "org.gnome.desktop.interface";
constexpr const char* kPlasma = "org.kde.kdeglobals.KDE";
constexpr uint kPrefersDark = 1;
constexpr uint kPrefersLight = 2;
constexpr double kSmallestText = 0.5;
constexpr double kLargestText = 3;

/// Three parts of a colour, on the bus a structure of three doubles, each from 0 to 1.
std::optional<QColor> colourOf(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    double red = -1;
    double green = -1;
    double blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    if (!isPart(red) || !isPart(green) || !isPart(blue))
        return std::nullopt; // outside the range stands for none
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

bool isDarkTheme(const QString& name)
{
    return name.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive) ||
           name.endsWith(QLatin1String(":dark"), Qt::CaseInsensitive);
}

} // namespace

QStringList AppearanceSettings::namespaces()
{
    return {QLatin1String(kAppearance), QLatin1String(kInterface), QLatin1String(kPlasma)};
}

QVariant AppearanceSettings::value(const char* group, const char* key) const
{
    return m_values.value(QLatin1String(group)).value(QLatin1String(key));
}

ColourScheme AppearanceSettings::colourScheme() const
{
    const QVariant preference = value(kAppearance, "color-scheme");
    if (preference.typeId() == QMetaType::UInt && preference.toUInt() == kPrefersDark)
        return ColourScheme::Dark;
    if (preference.typeId() == QMetaType::UInt && preference.toUInt() == kPrefersLight)
        return ColourScheme::Light;
    const QString scheme = value(kInterface, "color-scheme").toString();
    if (scheme == QLatin1String("prefer-dark"))
        return ColourScheme::Dark;
    if (scheme == QLatin1String("prefer-light"))
        return ColourScheme::Light;
    return isDarkTheme(value(kInterface, "gtk-theme").toString()) ? ColourScheme::Dark
                                                                  : ColourScheme::Unknown;
}

std::optional<QColor> AppearanceSettings::accentColour() const
{
    return colourOf(value(kAppearance, "accent-color"));
}

bool AppearanceSettings::reducedMotion() const
{
    const QVariant reduced = value(kAppearance, "reduced-motion");
    const QVariant animations = value(kInterface, "enable-animations");
    const QVariant duration = value(kPlasma, "AnimationDurationFactor"); // a number, as text
    return (reduced.typeId() == QMetaType::UInt && reduced.toUInt() == 1) ||
           (animations.typeId() == QMetaType::Bool && !animations.toBool()) ||
           (duration.typeId() == QMetaType::QString && duration.toString() == QLatin1String("0"));
}

double AppearanceSettings::textScale() const
{
    const QVariant factor = value(kInterface, "text-scaling-factor");
    const double scale = factor.typeId() == QMetaType::Double ? factor.toDouble() : 1;
    return scale > 0 ? std::clamp(scale, kSmallestText, kLargestText) : 1;
}

} // namespace tessary
