#include "platform/UserDefaults.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessary {

std::optional<QString> UserDefaults::string(const QString& key) const
{
    const QVariant value = object(key);
    if (!value.isValid() || value.typeId() == QMetaType::QStringList ||
        value.typeId() == QMetaType::QVariantList || !value.canConvert<QString>())
        return std::nullopt;
    return value.toString();
}

std::optional<QStringList> UserDefaults::stringArray(const QString& key) const
{
    const QVariant value = object(key);
    if (!value.isValid() || !value.canConvert<QStringList>())
        return std::nullopt;
    return value.toStringList();
}

bool UserDefaults::boolean(const QString& key) const
{
    const QVariant value = object(key);
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().trimmed().toLower();
    return text == QLatin1String("true") || text == QLatin1String("yes") || real(key) != 0.0;
}

int UserDefaults::integer(const QString& key) const
{
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(real(key), kLowest, kHighest));
}

double UserDefaults::real(const QString& key) const
{
    const double value = object(key).toDouble();
    return std::isfinite(value) ? value : 0.0;
}

} // namespace tessary
